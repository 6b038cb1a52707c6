#include "app/OutputCheck.h"

#include <chrono>

namespace tallyfold {

namespace {

using namespace std::chrono_literals;

constexpr auto settlingTime = 150ms;

} // namespace

OutputCheck::OutputCheck(AppModel &model, const CurrentPlan &plan, QObject *parent)
    : QObject(parent), m_model(&model), m_plan(&plan)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(settlingTime);
    connect(&m_timer, &QTimer::timeout, this, &OutputCheck::look);
    connect(&model, &AppModel::outputFolderChanged, this, &OutputCheck::look);
    connect(&model, &AppModel::folderCheckChanged, this, &OutputCheck::look);
    connect(&model, &AppModel::runningChanged, this, &OutputCheck::look);
    connect(&model, &AppModel::problemChanged, this, &OutputCheck::look); // A run may have been refused.
    connect(&model, &AppModel::settingsChanged, this, &OutputCheck::lookSoon);
    connect(&plan, &CurrentPlan::changed, this, &OutputCheck::lookSoon);
    look();
}

const std::vector<ProductionConflict> &OutputCheck::conflicts() const
{
    return m_conflicts;
}

void OutputCheck::lookSoon()
{
    if (m_model->outputFolder()) {
        m_timer.start();
    }
}

void OutputCheck::look()
{
    m_timer.stop();
    std::vector<ProductionConflict> conflicts;
    if (m_model->outputFolder() && !m_model->isRunning()) {
        conflicts = Production::findConflicts(**m_plan, *m_model->outputFolder(), m_model->options());
    }
    if (conflicts != m_conflicts) {
        m_conflicts = std::move(conflicts);
        Q_EMIT changed();
    }
}

} // namespace tallyfold
