#pragma once

#include "core/SourceFile.h"

#include <filesystem>

namespace tallyfold {

/// Whether page 1 is searched for an earlier number. That takes most of the time of `classify` and serves
/// only to inform the user: neither plan nor production depends on it.
enum class EarlierNumbers { find, leaveOut };

/// Opens the file at `location` once and determines its number of pages, its date, why it cannot be stamped,
/// if so, and an earlier number near the edges of page 1. Every location gives a source. Never throws. Called
/// on any thread: several files at a time give what each gives by itself.
[[nodiscard]] SourceFile classify(const std::filesystem::path &location,
                                  EarlierNumbers earlierNumbers = EarlierNumbers::find);

} // namespace tallyfold
