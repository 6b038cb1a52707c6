#pragma once

#include "core/SourceFile.h"

#include <filesystem>

namespace tallyfold {

/// Opens the file at `location` once and tells what it is: its pages, its date, why it cannot be stamped if
/// it cannot, and a number that page 1 already bears near an edge. Every location gives a source; nothing is
/// thrown.
[[nodiscard]] SourceFile classify(const std::filesystem::path &location);

} // namespace tallyfold
