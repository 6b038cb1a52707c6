#pragma once

#include "app/RunSummary.h"

#include <QString>

namespace tallyfold {

/// One line on what a run wrote.
[[nodiscard]] QString writtenText(const RunSummary &summary);

/// An explanation of starting the next production.
[[nodiscard]] QString nextProductionHelp(const RunSummary &summary);

} // namespace tallyfold
