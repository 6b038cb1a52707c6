#pragma once

#include "core/SourceFile.h"

#include <filesystem>

namespace tallyfold {

/// Whether page 1 is read for a number it bears already. It takes most of the time that classifying takes,
/// and only tells the user something: no plan or production depends on it.
enum class EarlierNumbers { find, leaveOut };

/// Opens the file at `location` once and tells what it is: its pages, its date, why it cannot be stamped if
/// it cannot, and a number that page 1 already bears near an edge. Every location gives a source; nothing is
/// thrown. Called on any thread: several files at a time give what each gives by itself.
[[nodiscard]] SourceFile classify(const std::filesystem::path &location,
                                  EarlierNumbers earlierNumbers = EarlierNumbers::find);

} // namespace tallyfold
