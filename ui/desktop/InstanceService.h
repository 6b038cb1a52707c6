#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <filesystem>
#include <functional>
#include <vector>

namespace tallyfold {

/// Ensures a single instance per session over D-Bus (`org.freedesktop.Application` of the desktop entry
/// specification): a second instance passes its files to the first and exits. Without a session bus every
/// instance runs independently.
class InstanceService final : public QObject {
    Q_OBJECT
public:
    /// On the session's bus, under the name `id`.
    explicit InstanceService(const QString &id);
    /// On `bus`, under the name `id`.
    explicit InstanceService(const QDBusConnection &bus, const QString &id, QObject *parent = nullptr);

    /// The role of this instance.
    enum class Role {
        first, ///< Later instances pass their files to this one.
        other, ///< Another instance is running; `handOver` reaches it.
        alone, ///< There is no bus, or the name was released.
    };
    [[nodiscard]] Role role() const;

    /// Passes `files` to the running instance and brings it to the front. False if it does not answer. If it
    /// has exited, this instance becomes the first.
    bool handOver(const std::vector<std::filesystem::path> &files);

    /// Releases the name, so that the next instance is the first. Called before exiting, when requests of
    /// other instances are no longer served.
    void giveBack();

Q_SIGNALS:
    /// Another instance requests the windows; `token` permits raising a window (XDG activation).
    void activated(const QString &token);
    /// As above with files.
    void opened(const std::vector<std::filesystem::path> &files, const QString &token);

private:
    [[nodiscard]] Role takePlace();

    QDBusConnection m_bus;
    QString m_id;
    Role m_role = Role::alone;
};

/// The D-Bus adaptor of the service.
class InstanceAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit InstanceAdaptor(InstanceService *service);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &action, const QVariantList &parameter,
                        const QVariantMap &platformData);

private:
    /// Runs `tell` after the call has been answered, since reading many files exceeds the timeout of callers.
    void tellLater(const std::function<void()> &tell);

    InstanceService *m_service;
};

} // namespace tallyfold
