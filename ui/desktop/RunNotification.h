#pragma once

#include "app/AppModel.h"
#include "ui/Desktop.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>

namespace tallyfold {

/// Tells through the desktop that a run has ended while its user is elsewhere: how it ended and how much was
/// written, and never the name of a file, for notifications are read by whoever passes the screen.
class RunNotification final : public QObject {
    Q_OBJECT
public:
    /// Who shows it.
    enum class Server {
        session, ///< `org.freedesktop.Notifications`.
        portal,  ///< `org.freedesktop.portal.Notification`, the way out of a sandbox.
    };
    /// The one that this program can reach.
    [[nodiscard]] static Server reachable();

    /// The windows of the program.
    struct Windows {
        /// Whether one of them has the keyboard: then nothing is told that it does not tell itself.
        std::function<bool()> areInFront;
        /// Brings them to the front; `token` lets them (XDG activation).
        std::function<void(const QString &token)> activate;
    };

    /// For the runs of `model`; the folder of a run is shown by `desktop`.
    RunNotification(const AppModel &model, Desktop &desktop, const QDBusConnection &bus, Windows windows,
                    Server server = reachable());

private Q_SLOTS:
    void hearAction(uint id, const QString &action);
    void hearToken(uint id, const QString &token);
    void hearPortalAction(const QString &id, const QString &action, const QVariantList &parameter);

private:
    void tell();
    void notifySession(const QString &title, const QString &text, bool hasFolder);
    void notifyPortal(const QString &title, const QString &text, bool hasFolder);
    void act(const QString &action);

    const AppModel *m_model;
    Desktop *m_desktop;
    QDBusConnection m_bus;
    Windows m_windows;
    Server m_server;
    std::filesystem::path m_folder; ///< Of the run that was told of.
    uint m_id = 0;                  ///< What the server calls the notification; 0 for none.
    QString m_token;
};

} // namespace tallyfold
