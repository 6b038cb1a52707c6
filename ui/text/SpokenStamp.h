#pragma once

#include "core/ProductionPlan.h"

#include <QString>

#include <cstddef>

namespace tallyfold {

/// The text of the stamp on a page, for screen readers: its lines from the legend on, or that there is none.
/// `page` is 0-based; empty for a page that is not planned.
[[nodiscard]] QString spokenStamp(const PlannedFile &file, const NormalizedSettings &settings,
                                  std::size_t page);

} // namespace tallyfold
