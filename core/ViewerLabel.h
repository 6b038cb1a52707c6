#pragma once

#include "core/NormalizedSettings.h"
#include "core/ProductionPlan.h"
#include "pdf/copy/PageLabel.h"

namespace tallyfold {

/// The page label that gives `page` its Bates number in viewers, whether it is stamped or not; empty where
/// the page is not counted.
[[nodiscard]] pdf::PageLabel viewerLabel(const PlannedPage &page, const NormalizedSettings &settings);

} // namespace tallyfold
