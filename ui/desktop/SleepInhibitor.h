#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace tallyfold {

class AppModel;

/// Keeps the machine from falling asleep by itself, and the session from ending unasked, while a production
/// is written, which may be long after the user has gone home. Closing the lid or choosing to suspend still
/// does; the run then goes on where it was when the machine wakes.
class SleepInhibitor final : public QObject {
    Q_OBJECT
public:
    /// For the runs of `model`, through the desktop portal on `bus`; where there is none, sleep is not kept
    /// off.
    SleepInhibitor(const AppModel &model, const QDBusConnection &bus);

private:
    void ask();
    void letGo();
    void close(const QString &request);

    QDBusConnection m_bus;
    int m_run = 0;     ///< Counts starts and ends: which one an answer belongs to.
    QString m_request; ///< What the portal holds for us; empty when that is nothing.
};

} // namespace tallyfold
