#pragma once

#include "core/NormalizedSettings.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace tallyfold {

/// `name` as the name of a PDF file: slashes and colons become hyphens, line breaks and control characters
/// spaces (a NUL would end the name for the system, a control sequence speak to terminals that list it);
/// white space at the ends and leading dots go; nothing at all becomes "Document"; ".pdf" is added where it
/// is missing.
[[nodiscard]] QString cleanedFileName(const QString &name);

/// First and last number of a file's pages.
struct NumberRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

/// The name of the stamped copy of the source called `sourceName`, whose numbered pages have the numbers
/// `range` (nothing when it has none: then the copy is named as its source).
[[nodiscard]] QString outputName(const QString &sourceName, const std::optional<NumberRange> &range,
                                 OutputNaming naming, const BatesFormatter &bates);

} // namespace tallyfold
