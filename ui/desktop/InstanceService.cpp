#include "ui/desktop/InstanceService.h"

#include "app/UriList.h"
#include "ui/Log.h"
#include "ui/desktop/BusLog.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace tallyfold {

namespace {

constexpr int answerTime = 5000; // Milliseconds; after that the other instance is considered hung.
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

QString pathOf(const QString &id)
{
    return QLatin1Char('/') + QString(id).replace(QLatin1Char('.'), QLatin1Char('/'));
}

QString tokenIn(const QVariantMap &platformData)
{
    return platformData.value(QStringLiteral("activation-token")).toString();
}

/// The activation token that permits the other instance to raise its window.
QVariantMap platformData()
{
    QVariantMap data;
    const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    if (!token.isEmpty()) {
        data.insert(QStringLiteral("activation-token"), token);
    }
    return data;
}

} // namespace

InstanceService::InstanceService(const QString &id) : InstanceService(QDBusConnection::sessionBus(), id) {}

InstanceService::InstanceService(const QDBusConnection &bus, const QString &id, QObject *parent)
    : QObject(parent), m_bus(bus), m_id(id)
{
    if (!m_bus.isConnected()) {
        qCInfo(uiLog) << "there is no session bus";
        return;
    }
    new InstanceAdaptor(this);
    if (m_bus.registerObject(pathOf(m_id), this, QDBusConnection::ExportAdaptors)) {
        m_role = takePlace();
    } else {
        logBusFailure("offering the program to the desktop", m_bus.lastError());
    }
}

InstanceService::Role InstanceService::takePlace()
{
    return m_bus.registerService(m_id) ? Role::first : Role::other;
}

InstanceService::Role InstanceService::role() const
{
    return m_role;
}

void InstanceService::giveBack()
{
    if (m_role == Role::first) {
        m_bus.unregisterService(m_id);
        m_role = Role::alone;
    }
}

bool InstanceService::handOver(const std::vector<std::filesystem::path> &files)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(m_id, pathOf(m_id), applicationInterface,
                                       files.empty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    if (!files.empty()) {
        QStringList uris;
        for (const std::filesystem::path &file : files) {
            uris.append(QString::fromLatin1(fileUri(file)));
        }
        call << uris;
    }
    call << platformData();
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, answerTime);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return true;
    }
    logBusFailure("handing over to the program that runs", QDBusError(reply));
    m_role = takePlace();
    return false;
}

InstanceAdaptor::InstanceAdaptor(InstanceService *service) : QDBusAbstractAdaptor(service), m_service(service)
{
}

void InstanceAdaptor::Activate(const QVariantMap &platformData)
{
    tellLater([service = m_service, token = tokenIn(platformData)] { Q_EMIT service->activated(token); });
}

void InstanceAdaptor::Open(const QStringList &uris, const QVariantMap &platformData)
{
    tellLater([service = m_service, files = localPathsIn(uris.join(QStringLiteral("\r\n")).toUtf8()),
               token = tokenIn(platformData)] { Q_EMIT service->opened(files, token); });
}

void InstanceAdaptor::ActivateAction(const QString &, const QVariantList &, const QVariantMap &platformData)
{
    Activate(platformData); // The desktop entry names no actions.
}

void InstanceAdaptor::tellLater(const std::function<void()> &tell)
{
    QMetaObject::invokeMethod(m_service, tell, Qt::QueuedConnection);
}

} // namespace tallyfold
