// Running a production.

#include "app/AppModel.h"
#include "app/RunMessages.h"

#include <exception>
#include <utility>

namespace tallyfold {

namespace {

/// Pages between progress updates, which limits the load of the main thread.
constexpr std::int64_t progressStep = 5;

} // namespace

AppModel::Writer AppModel::systemWriter()
{
    return
        [](const ProductionPlan &plan, const std::filesystem::path &folder, const ProductionOptions &options,
           const Production::OnPage &onPage) { return Production::write(plan, folder, options, onPage); };
}

bool AppModel::isRunning() const
{
    return m_isRunning;
}

bool AppModel::isConfirmingProtected() const
{
    return m_isConfirmingProtected;
}

void AppModel::setConfirmingProtected(bool isConfirming)
{
    assign(m_isConfirmingProtected, isConfirming, &AppModel::confirmingProtectedChanged);
}

std::int64_t AppModel::progressPages() const
{
    return m_progressPages;
}

const std::optional<RunSummary> &AppModel::summary() const
{
    return m_summary;
}

ProductionPlan AppModel::plan() const
{
    return {m_sources, m_settings.stamp};
}

ProductionOptions AppModel::options() const
{
    return {m_settings.writeIndex, m_settings.writePrivilegeLog};
}

std::optional<QString> AppModel::existingFilesMessage() const
{
    if (!m_outputFolder) {
        return std::nullopt;
    }
    return tallyfold::existingFilesMessage(Production::findConflicts(plan(), *m_outputFolder, options()));
}

void AppModel::stamp(bool confirmed)
{
    if (m_isRunning || m_isReading) {
        return;
    }
    if (!m_outputFolder) {
        chooseOutputFolder();
    }
    if (!m_outputFolder) {
        return;
    }
    if (!isListAsKnown()) {
        return;
    }
    const ProductionPlan plan = this->plan();
    const ProductionOptions options = this->options();
    if (!Production::findConflicts(plan, *m_outputFolder, options).empty()) {
        setProblem(nothingWrittenMessage());
        return;
    }
    if (plan.passwordNotice() && !confirmed) {
        setConfirmingProtected(true);
        return;
    }
    run(plan, *m_outputFolder, options);
}

void AppModel::stampOthers()
{
    setConfirmingProtected(false);
    stamp(true);
}

void AppModel::cancelRun()
{
    m_cancelFlag.set(true);
}

void AppModel::run(const ProductionPlan &plan, const std::filesystem::path &folder,
                   const ProductionOptions &options)
{
    m_cancelFlag.set(false);
    assign(m_isRunning, true, &AppModel::runningChanged);
    // The thread shares only the flag and the mailbox with the model.
    const auto onPage = [this](std::int64_t pages) {
        if (pages % progressStep == 0) {
            m_production.post(
                [this, pages] { assign(m_progressPages, pages, &AppModel::progressPagesChanged); });
        }
        return !m_cancelFlag.value();
    };
    m_production.start([this, write = m_writer, plan, folder, options, onPage]() -> BackgroundTask::Ending {
        try {
            const ProductionResult result = write(plan, folder, options, onPage);
            return [this, summary = RunSummary::of(result, plan, folder)] {
                endRun();
                showSummary(summary);
            };
        } catch (const ProductionError &error) {
            if (const auto *stopped = std::get_if<ProductionError::Cancelled>(&error.value)) {
                return [this, summary = RunSummary::ofStopped(stopped->written, plan, folder)] {
                    endRun();
                    showSummary(summary);
                };
            }
            const auto &found = std::get<ProductionError::Conflicts>(error.value);
            return [this, message = conflictsDuringRunMessage(found.conflicts)] {
                endRun();
                setProblem(message);
            };
        } catch (const FileError &error) {
            return [this, message = failedRunMessage(error)] {
                endRun();
                setProblem(message);
            };
        } catch (const std::exception &error) { // For example out of memory.
            return [this, message = failedRunMessage(QString::fromLocal8Bit(error.what()))] {
                endRun();
                setProblem(message);
            };
        }
    });
}

void AppModel::endRun()
{
    assign(m_isRunning, false, &AppModel::runningChanged);
    assign(m_progressPages, std::int64_t{0}, &AppModel::progressPagesChanged);
}

void AppModel::showSummary(const RunSummary &summary)
{
    assign(m_summary, std::optional(summary), &AppModel::summaryChanged);
    setSheet(Sheet::result);
}

void AppModel::startNextProduction()
{
    if (!m_summary) {
        return;
    }
    if (!m_summary->isSeriesFull()) {
        StampSettings stamp = m_settings.stamp;
        stamp.startNumber = m_summary->nextNumber;
        setStamp(stamp);
    }
    ++*m_series;
    forgetStepsOfEarlierSeries();
    setSources({});
    refreshPreviews();
    assign(m_progressPages, std::int64_t{0}, &AppModel::progressPagesChanged);
    checkFolderAgain();
}

} // namespace tallyfold
