#include "ui/desktop/TaskbarProgress.h"

#include "ui/shell/AppIdentity.h"
#include "ui/text/PlanText.h"

#include <QDBusMessage>
#include <QVariantMap>

namespace tallyfold {

TaskbarProgress::TaskbarProgress(const AppModel &model, const CurrentPlan &plan, const QDBusConnection &bus)
    : m_model(&model), m_bus(bus)
{
    if (!m_bus.isConnected()) {
        return;
    }
    connect(&model, &AppModel::runningChanged, this, [this, &plan] {
        if (m_model->isRunning()) { // The list may change during the run, which does not affect it.
            m_pages = pagesToWrite(*plan);
        }
        tell();
    });
    connect(&model, &AppModel::progressPagesChanged, this, &TaskbarProgress::tell);
}

void TaskbarProgress::tell()
{
    const double done = static_cast<double>(m_model->progressPages());
    const QVariantMap state{
        {QStringLiteral("progress"), m_pages > 0 ? done / static_cast<double>(m_pages) : 0.0},
        {QStringLiteral("progress-visible"), m_model->isRunning()}};
    QDBusMessage update = QDBusMessage::createSignal(
        identity::objectPath, QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    update << QStringLiteral("application://%1.desktop").arg(identity::id) << state;
    m_bus.send(update);
}

} // namespace tallyfold
