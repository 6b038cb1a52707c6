#include "ui/desktop/SleepInhibitor.h"

#include "app/AppModel.h"
#include "ui/desktop/BusLog.h"
#include "ui/desktop/Portal.h"
#include "ui/text/Words.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <utility>

namespace tallyfold {

SleepInhibitor::SleepInhibitor(const AppModel &model, const QDBusConnection &bus) : m_bus(bus)
{
    connect(&model, &AppModel::runningChanged, this, [this, &model] {
        if (model.isRunning()) {
            ask();
        } else {
            letGo();
        }
    });
}

void SleepInhibitor::ask()
{
    if (!m_bus.isConnected()) {
        return;
    }
    // Flags of the portal: 1 logging out, 2 switching users, 4 suspending, 8 going idle. Idle is not
    // inhibited: it locks the screen, which may show confidential documents.
    constexpr uint loggingOut = 1;
    constexpr uint suspending = 4;
    QDBusMessage call = QDBusMessage::createMethodCall(portal::service, portal::path,
                                                       QStringLiteral("org.freedesktop.portal.Inhibit"),
                                                       QStringLiteral("Inhibit"));
    call << QString() << (loggingOut | suspending)
         << QVariantMap{{QStringLiteral("reason"),
                         words(QT_TRANSLATE_NOOP("Words", "A production is being written"))}};
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, run = ++m_run] {
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        if (reply.isValid() && run == m_run) {
            m_request = reply.value().path();
        } else if (reply.isValid()) {
            close(reply.value().path()); // The run ended before the answer arrived.
        } else {
            logBusFailure("keeping the machine awake", reply.error());
        }
        watcher->deleteLater();
    });
}

void SleepInhibitor::letGo()
{
    ++m_run;
    if (!m_request.isEmpty()) {
        close(std::exchange(m_request, {}));
    }
}

void SleepInhibitor::close(const QString &request)
{
    m_bus.send(QDBusMessage::createMethodCall(
        portal::service, request, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Close")));
}

} // namespace tallyfold
