#pragma once

#include "app/AppModel.h"
#include "ui/Desktop.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>

namespace tallyfold {

/// Shows a desktop notification when a run ends while no window is active: how it ended and how much was
/// written. Never contains file names, since others may see the screen.
class RunNotification final : public QObject {
    Q_OBJECT
public:
    /// The service that shows the notification.
    enum class Server {
        session, ///< `org.freedesktop.Notifications`.
        portal,  ///< `org.freedesktop.portal.Notification`, available in a sandbox.
    };
    /// The service available to this program.
    [[nodiscard]] static Server reachable();

    /// The windows of the program.
    struct Windows {
        /// Whether a window is active; it then shows the result itself.
        std::function<bool()> areInFront;
        /// Raises them; `token` permits that (XDG activation).
        std::function<void(const QString &token)> activate;
    };

    /// For the runs of `model`; `desktop` shows the output folder.
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
    std::filesystem::path m_folder; ///< Output folder of the last notification.
    uint m_id = 0;                  ///< Identifier of the notification; 0 for none.
    QString m_token;
};

} // namespace tallyfold
