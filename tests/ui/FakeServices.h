#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>
#include <QStringList>

namespace tallyfold::tests {

/// A file manager that notes what it is asked to show, and answers as it is told to.
class FakeFileManager final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")
public:
    enum class Answer { yes, error, none };

    /// Takes the file manager's place on `bus`; false when it cannot be had.
    [[nodiscard]] bool takePlaceOn(QDBusConnection bus);

    Answer answer = Answer::yes;
    QStringList shown;

public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &startupId);
};

/// A settings portal that holds one value of each key.
class FakeSettingsPortal final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    /// Takes the portal's place on `bus`; false when it cannot be had.
    [[nodiscard]] bool takePlaceOn(QDBusConnection bus);

    /// Of `org.freedesktop.appearance` `color-scheme`; invalid for a portal that does not know it.
    QVariant colorScheme;
    int readCount = 0;

    /// Changes a setting, and tells of it.
    void change(const QString &group, const QString &key, const QVariant &value);

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key);

private:
    QDBusConnection m_bus{QString()};
};

/// Counts what settings portals tell of on a connection.
class SettingsListener final : public QObject {
    Q_OBJECT
public:
    explicit SettingsListener(QDBusConnection bus);

    int heardCount = 0;

private Q_SLOTS:
    void hear();
};

} // namespace tallyfold::tests
