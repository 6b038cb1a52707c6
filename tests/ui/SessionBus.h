#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace tallyfold::tests {

/// A session bus of a test's own, so that tests neither need nor disturb a real session.
class SessionBus {
public:
    SessionBus();
    ~SessionBus();
    SessionBus(const SessionBus &) = delete;
    SessionBus &operator=(const SessionBus &) = delete;

    /// Whether the bus could be started.
    [[nodiscard]] bool isRunning() const;
    /// A connection of its own to the bus, as another program would have.
    [[nodiscard]] QDBusConnection connection(const QString &name) const;

private:
    QProcess m_daemon;
    QString m_address;
};

} // namespace tallyfold::tests
