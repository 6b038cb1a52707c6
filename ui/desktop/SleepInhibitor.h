#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace tallyfold {

class AppModel;

/// Inhibits automatic suspend and logging out during a production, which may run unattended. Suspending by
/// the lid or on request remains possible; the run continues after waking up.
class SleepInhibitor final : public QObject {
    Q_OBJECT
public:
    /// For the runs of `model`, through the desktop portal on `bus`. No effect without a portal.
    SleepInhibitor(const AppModel &model, const QDBusConnection &bus);

private:
    void ask();
    void letGo();
    void close(const QString &request);

    QDBusConnection m_bus;
    int m_run = 0;     ///< Counts starts and ends, to match answers with them.
    QString m_request; ///< Object path of the current inhibition; empty for none.
};

} // namespace tallyfold
