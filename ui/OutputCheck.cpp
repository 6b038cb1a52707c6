#include "ui/OutputCheck.h"

#include "app/RunMessages.h"
#include "ui/text/Messages.h"

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
    connect(&model, &AppModel::problemChanged, this, &OutputCheck::look); // A start was refused, perhaps.
    connect(&model, &AppModel::settingsChanged, this, &OutputCheck::lookSoon);
    connect(&plan, &CurrentPlan::changed, this, &OutputCheck::lookSoon);
    look();
}

const std::vector<ProductionConflict> &OutputCheck::conflicts() const
{
    return m_conflicts;
}

std::optional<QString> OutputCheck::problem() const
{
    return m_conflicts.empty() ? std::nullopt : std::optional(messageOf(m_conflicts.front()));
}

std::optional<QString> OutputCheck::folderProblem() const
{
    if (m_conflicts.empty() || m_conflicts.front().kind == ProductionConflict::Kind::nothingToStamp) {
        return std::nullopt;
    }
    const std::optional<QString> existing = existingFilesMessage(m_conflicts);
    return existing ? existing : problem();
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
