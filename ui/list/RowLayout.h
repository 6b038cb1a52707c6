#pragma once

#include "core/ProductionPlan.h"

#include <optional>

namespace tallyfold {

/// What of a file decides how tall its row is: cheap to have for thousands of rows.
struct RowLayout {
    std::optional<SourceProblem> problem;
    bool hasRange = false;
    bool isSkipped = false;
    bool isCoverOnly = false;
    std::optional<QString> existingBates; ///< Its text wraps.

    [[nodiscard]] static RowLayout of(const PlannedFile &file);

    bool operator==(const RowLayout &) const = default;
};

} // namespace tallyfold
