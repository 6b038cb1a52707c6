#include "app/ReportSaver.h"

#include <optional>

namespace tallyfold {

ReportSaver::~ReportSaver() = default;

void ReportSaver::save(const CheckReport &report, const std::filesystem::path &path)
{
    if (m_isSaving) {
        return;
    }
    m_isSaving = true;
    Q_EMIT savingChanged();
    m_task.start([this, report, path]() -> BackgroundTask::Ending {
        const std::optional<ReportFailure> failure = saveReport(report, path);
        return [this, failure, path] {
            m_isSaving = false;
            Q_EMIT savingChanged();
            if (failure) {
                Q_EMIT failed(*failure);
            } else {
                Q_EMIT saved(path);
            }
        };
    });
}

bool ReportSaver::isSaving() const
{
    return m_isSaving;
}

} // namespace tallyfold
