#pragma once

#include "app/FailureReasons.h"
#include "core/Production.h"
#include "core/ProductionPlan.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace tallyfold {

/// The outcome of a run that was completed or stopped, as shown by the result sheet.
struct RunSummary {
    std::int64_t files = 0;       ///< Copies written.
    std::int64_t pages = 0;       ///< Pages written; after a stop, those of finished copies.
    std::optional<QString> range; ///< First to last Bates number, after a stop those of finished copies;
                                  ///< absent if there is none.
    std::int64_t nextNumber = 1;  ///< First number of the next production of the series.
    QString nextBates;            ///< That number as a Bates number.
    std::filesystem::path folder; ///< The output folder.
    std::optional<std::filesystem::path> index;
    std::optional<std::filesystem::path> privilegeLog;
    QStringList failures; ///< Names of the sources that could not be stamped, in production order.
    bool cancelled = false;
    std::vector<FailureReason> reasons; ///< Of the failures, the most frequent first.

    /// Whether the next number exceeds the highest start number, so that the series cannot be continued.
    [[nodiscard]] bool isSeriesFull() const;

    /// The summary of a completed production.
    [[nodiscard]] static RunSummary of(const ProductionResult &result, const ProductionPlan &plan,
                                       const std::filesystem::path &folder);
    /// The summary of a production that was stopped after the copies `written`.
    [[nodiscard]] static RunSummary ofStopped(const std::vector<std::filesystem::path> &written,
                                              const ProductionPlan &plan,
                                              const std::filesystem::path &folder);

    bool operator==(const RunSummary &) const = default;
};

} // namespace tallyfold
