#include "tests/ui/SessionBus.h"

namespace tallyfold::tests {

SessionBus::SessionBus()
{
    m_daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                   QStringLiteral("--print-address")});
    if (m_daemon.waitForStarted() && m_daemon.waitForReadyRead()) {
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
}

SessionBus::~SessionBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

bool SessionBus::isRunning() const
{
    return !m_address.isEmpty();
}

QDBusConnection SessionBus::connection(const QString &name) const
{
    return QDBusConnection::connectToBus(m_address, name);
}

} // namespace tallyfold::tests
