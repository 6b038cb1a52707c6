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

/// What the result sheet tells of a run that came to an end or was stopped.
struct RunSummary {
    std::int64_t files = 0;       ///< Copies written.
    std::int64_t pages = 0;       ///< Pages written; of a stopped run those of finished copies.
    std::optional<QString> range; ///< First to last Bates number, of a stopped run in finished copies; absent
                                  ///< when there is none.
    std::int64_t nextNumber = 1;  ///< Number that the next production of the series starts with.
    QString nextBates;            ///< That number as a Bates number.
    std::filesystem::path folder; ///< The output folder.
    std::optional<std::filesystem::path> index;
    std::optional<std::filesystem::path> privilegeLog;
    QStringList failures; ///< Names of the sources that could not be stamped, in production order.
    bool cancelled = false;
    std::vector<FailureReason> reasons; ///< Of the failures, the commonest first.

    /// Whether no production can start where the series would go on: beyond the highest start number.
    [[nodiscard]] bool isSeriesFull() const;

    /// Of a production that was written to its end.
    [[nodiscard]] static RunSummary of(const ProductionResult &result, const ProductionPlan &plan,
                                       const std::filesystem::path &folder);
    /// Of a production that was stopped after the copies `written`.
    [[nodiscard]] static RunSummary ofStopped(const std::vector<std::filesystem::path> &written,
                                              const ProductionPlan &plan,
                                              const std::filesystem::path &folder);

    bool operator==(const RunSummary &) const = default;
};

} // namespace tallyfold
