#pragma once

#include "core/NormalizedSettings.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace tallyfold {

/// `name` as the name of a PDF file. Slashes and colons become hyphens; line breaks and control characters
/// become spaces (a NUL would end the name in system calls, control sequences would affect terminals); outer
/// white space and leading dots are removed; an empty name becomes "Document"; ".pdf" is added if it is
/// missing.
[[nodiscard]] QString cleanedFileName(const QString &name);

/// First and last number of the pages of a file.
struct NumberRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

/// The name of the stamped copy of the source `sourceName`, whose pages have the numbers `range`. Without
/// numbered pages the copy is named like its source.
[[nodiscard]] QString outputName(const QString &sourceName, const std::optional<NumberRange> &range,
                                 OutputNaming naming, const BatesFormatter &bates);

} // namespace tallyfold
