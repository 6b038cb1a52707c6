#pragma once

#include "core/SourceFile.h"
#include "core/StampSettings.h"

#include <rapidcheck.h>

#include <cstdint>
#include <ostream>
#include <vector>

namespace tallyfold {

// What a failing case is told as.
std::ostream &operator<<(std::ostream &out, const StampSettings &settings);
std::ostream &operator<<(std::ostream &out, const SourceFile &source);

namespace tests {

/// Text of letters and of what makes trouble: line breaks of every kind, control characters, spaces of other
/// widths, quotes, slashes, dots, characters of several code points. Often longer than any limit. Valid
/// Unicode.
[[nodiscard]] rc::Gen<QString> texts();

/// The name of a file, from few enough that some are alike but for letter case, accents or numbers.
[[nodiscard]] rc::Gen<QString> fileNames();

/// Settings as they come from outside: any text, numbers in and out of their limits, also what is no number.
[[nodiscard]] rc::Gen<StampSettings> rawSettings();

/// The same with a colour that equals itself, as one with a component that is no number does not.
[[nodiscard]] rc::Gen<StampSettings> finiteSettings();

/// Sources of up to six pages with every problem and none; the dates are few.
[[nodiscard]] rc::Gen<std::vector<SourceFile>> sourceLists();

} // namespace tests

} // namespace tallyfold
