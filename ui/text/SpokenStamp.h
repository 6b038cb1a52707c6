#pragma once

#include "core/ProductionPlan.h"

#include <QString>

#include <cstddef>

namespace tallyfold {

/// What a page's stamp reads, for those who do not see it: its lines from the legend on, or that there is
/// none. `page` is counted from 0; a page that is not planned has nothing to be told.
[[nodiscard]] QString spokenStamp(const PlannedFile &file, const NormalizedSettings &settings,
                                  std::size_t page);

} // namespace tallyfold
