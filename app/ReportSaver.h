#pragma once

#include "app/BackgroundTask.h"
#include "app/CheckReport.h"

#include <QObject>

#include <filesystem>

namespace tallyfold {

/// Saves reports in the background, one at a time: those of very many findings take a while.
class ReportSaver final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    /// Waits for a report that is being saved.
    ~ReportSaver() override;

    /// Saves `report` as `saveReport` does. Nothing while one is being saved.
    void save(const CheckReport &report, const std::filesystem::path &path);

    [[nodiscard]] bool isSaving() const;

Q_SIGNALS:
    void savingChanged();
    void saved(const std::filesystem::path &path);
    void failed(const tallyfold::ReportFailure &failure);

private:
    bool m_isSaving = false;
    BackgroundTask m_task;
};

} // namespace tallyfold
