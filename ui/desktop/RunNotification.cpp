#include "ui/desktop/RunNotification.h"

#include "app/RunMessages.h"
#include "ui/desktop/BusLog.h"
#include "ui/desktop/Portal.h"
#include "ui/shell/AppIdentity.h"
#include "ui/text/ResultText.h"
#include "ui/text/Words.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>

#include <utility>

namespace tallyfold {

namespace {

const QString sessionName = QStringLiteral("org.freedesktop.Notifications");
const QString sessionPath = QStringLiteral("/org/freedesktop/Notifications");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Notification");
const QString portalId = QStringLiteral("run");

const QString activateAction = QStringLiteral("default"); ///< A click on the notification itself.
const QString showAction = QStringLiteral("show");

QString showTitle()
{
    return words(QT_TRANSLATE_NOOP("Words", "Show in Finder"));
}

} // namespace

RunNotification::Server RunNotification::reachable()
{
    return QFile::exists(QStringLiteral("/.flatpak-info")) ? Server::portal : Server::session;
}

RunNotification::RunNotification(const AppModel &model, Desktop &desktop, const QDBusConnection &bus,
                                 Windows windows, Server server)
    : m_model(&model), m_desktop(&desktop), m_bus(bus), m_windows(std::move(windows)), m_server(server)
{
    if (!m_bus.isConnected()) {
        return;
    }
    const auto hear = [this](const QString &signal, const char *slot) {
        m_bus.connect(sessionName, sessionPath, sessionName, signal, this, slot);
    };
    if (m_server == Server::session) {
        hear(QStringLiteral("ActionInvoked"), SLOT(hearAction(uint, QString)));
        hear(QStringLiteral("ActivationToken"), SLOT(hearToken(uint, QString)));
    } else {
        qDBusRegisterMetaType<QList<QVariantMap>>();
        m_bus.connect(portal::service, portal::path, portalInterface, QStringLiteral("ActionInvoked"), this,
                      SLOT(hearPortalAction(QString, QString, QVariantList)));
    }
    connect(&model, &AppModel::runningChanged, this, [this, &model] {
        if (!model.isRunning()) { // The result is set after this signal.
            QMetaObject::invokeMethod(this, &RunNotification::tell, Qt::QueuedConnection);
        }
    });
}

void RunNotification::tell()
{
    if (m_model->isRunning() || m_windows.areInFront()) {
        return;
    }
    const bool isWritten = m_model->sheet() == Sheet::result && m_model->summary();
    const QString text = isWritten ? writtenText(*m_model->summary())
                                   : words(QT_TRANSLATE_NOOP("Words", "The production couldn’t be written."));
    m_folder = isWritten ? m_model->summary()->folder : std::filesystem::path();
    if (m_server == Server::session) {
        notifySession(displayedName(), text, isWritten);
    } else {
        notifyPortal(displayedName(), text, isWritten);
    }
}

void RunNotification::notifySession(const QString &title, const QString &text, bool hasFolder)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(sessionName, sessionPath, sessionName, QStringLiteral("Notify"));
    QStringList actions{activateAction, title};
    if (hasFolder) {
        actions += {showAction, showTitle()};
    }
    constexpr int serversOwnTime = -1;
    call << title << m_id << identity::id << title << text.toHtmlEscaped() << actions
         << QVariantMap{{QStringLiteral("desktop-entry"), identity::id}} << serversOwnTime;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        m_id = reply.isValid() ? reply.value() : 0;
        if (reply.isError()) {
            logBusFailure("showing a notification", reply.error());
        }
        watcher->deleteLater();
    });
}

void RunNotification::notifyPortal(const QString &title, const QString &text, bool hasFolder)
{
    QVariantMap content{{QStringLiteral("title"), title},
                        {QStringLiteral("body"), text},
                        {QStringLiteral("default-action"), activateAction}};
    if (hasFolder) {
        const QVariantMap button{{QStringLiteral("label"), showTitle()},
                                 {QStringLiteral("action"), showAction}};
        content.insert(QStringLiteral("buttons"), QVariant::fromValue(QList<QVariantMap>{button}));
    }
    QDBusMessage call = QDBusMessage::createMethodCall(portal::service, portal::path, portalInterface,
                                                       QStringLiteral("AddNotification"));
    call << portalId << content;
    m_bus.send(call);
}

void RunNotification::hearToken(uint id, const QString &token)
{
    if (id == m_id) {
        m_token = token;
    }
}

void RunNotification::hearAction(uint id, const QString &action)
{
    if (m_id != 0 && id == m_id) { // Servers send signals for all notifications to all programs.
        act(action);
    }
}

void RunNotification::hearPortalAction(const QString &id, const QString &action, const QVariantList &)
{
    if (id == portalId) {
        act(action);
    }
}

void RunNotification::act(const QString &action)
{
    if (action == showAction && !m_folder.empty()) {
        m_desktop->reveal(m_folder);
    } else {
        m_windows.activate(std::exchange(m_token, {}));
    }
}

} // namespace tallyfold
