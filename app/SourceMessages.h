#pragma once

#include "app/KnownSources.h"

#include <QString>

#include <vector>

namespace tallyfold {

/// What is said before a run of `changes`, of which there are some.
[[nodiscard]] QString changedSourcesMessage(const std::vector<SourceChange> &changes);

} // namespace tallyfold
