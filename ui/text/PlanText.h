#pragma once

#include "core/ProductionPlan.h"

#include <QString>

#include <optional>

namespace tallyfold {

/// The totals below the list.
struct PlanSummary {
    QString totals;                 ///< "3 files, 120 pages".
    std::optional<QString> range;   ///< First to last number of the production.
    std::optional<QString> skipped; ///< "2 skipped (listed in the index)".

    bool operator==(const PlanSummary &) const = default;
};

[[nodiscard]] PlanSummary summaryOf(const ProductionPlan &plan);

/// The status line of the stamp bar while no production runs.
[[nodiscard]] QString statusOf(const ProductionPlan &plan);

/// "Stamping… 12 of 340 pages".
[[nodiscard]] QString progressText(std::int64_t done, std::int64_t total);

/// The number of pages that a production of `plan` writes.
[[nodiscard]] std::int64_t pagesToWrite(const ProductionPlan &plan);

} // namespace tallyfold
