#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <utility>
#include <vector>

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
    /// The same of `contrast`.
    QVariant contrast;
    int readCount = 0; ///< Of the colour scheme.

    /// Changes a setting, and tells of it.
    void change(const QString &group, const QString &key, const QVariant &value);

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key);

private:
    QDBusConnection m_bus{QString()};
};

/// A portal that notes what it is asked to hold off, and what it was told to let go again. Answers when it is
/// let.
class FakeInhibitPortal final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Inhibit")
public:
    /// Takes the portal's place on `bus`; false when it cannot be had.
    [[nodiscard]] bool takePlaceOn(QDBusConnection bus);

    /// A request that it holds.
    struct Held {
        uint flags;
        QString reason;
    };
    QMap<QString, Held> held; ///< By its path.
    int askedCount = 0;
    int closedCount = 0;
    bool refuses = false;
    bool answersLater = false;
    /// Answers the call that was left without an answer.
    void answerNow();

public Q_SLOTS:
    QDBusObjectPath Inhibit(const QString &window, uint flags, const QVariantMap &options);

private:
    void close(const QString &path);

    QDBusConnection m_bus{QString()};
    QDBusMessage m_unanswered;
    std::vector<std::unique_ptr<QObject>> m_requests;

    friend class FakePortalRequest;
};

/// A request that an inhibit portal holds for a program.
class FakePortalRequest final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")
public:
    FakePortalRequest(FakeInhibitPortal &portal, QString path) : m_portal(portal), m_path(std::move(path)) {}

public Q_SLOTS:
    void Close()
    {
        m_portal.close(m_path);
    }

private:
    FakeInhibitPortal &m_portal;
    QString m_path;
};

/// A notification server that notes what it is given.
class FakeNotifications final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    /// Takes the server's place on `bus`; false when it cannot be had.
    [[nodiscard]] bool takePlaceOn(QDBusConnection bus);

    struct Shown {
        QString title;
        QString text;
        QStringList actions;
        QVariantMap hints;
    };
    std::vector<Shown> shown;

    /// Does as if the user chose `action` of the notification `id`, which a server tells to everyone.
    void choose(uint id, const QString &action);

public Q_SLOTS:
    uint Notify(const QString &program, uint replaced, const QString &icon, const QString &title,
                const QString &text, const QStringList &actions, const QVariantMap &hints, int time);

private:
    QDBusConnection m_bus{QString()};
};

/// The notifications of a portal.
class FakeNotificationPortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Notification")
public:
    /// Takes the portal's place on `bus`; false when it cannot be had.
    [[nodiscard]] bool takePlaceOn(QDBusConnection bus);

    QVariantMap shown; ///< The last one's content.
    QString id;
    void choose(const QString &action);

public Q_SLOTS:
    void AddNotification(const QString &id, const QVariantMap &content);

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
