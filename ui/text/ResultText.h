#pragma once

#include "app/RunSummary.h"

#include <QString>

namespace tallyfold {

/// What a run left in its folder, in one line.
[[nodiscard]] QString writtenText(const RunSummary &summary);

/// What starting the next production does.
[[nodiscard]] QString nextProductionHelp(const RunSummary &summary);

} // namespace tallyfold
