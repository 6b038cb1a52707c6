#pragma once

#include "app/SourceReading.h"

#include <QString>

namespace tallyfold {

/// What is said while files are read: which one of how many it is the turn of.
[[nodiscard]] QString readingText(const SourceReading::Progress &progress);

} // namespace tallyfold
