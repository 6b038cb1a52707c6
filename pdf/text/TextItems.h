#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace tallyfold::pdf {

/// A run of text of one script and direction, which is shaped as a whole.
struct TextItem {
    qsizetype start = 0; ///< In UTF-16 units.
    qsizetype length = 0;
    bool isRightToLeft = false;
    std::uint32_t script = 0; ///< ISO 15924 tag, as HarfBuzz takes it.
};

/// The items of a line in visual order (UAX #9 and #24). The direction of the line is that of its first
/// strong character, left to right without one.
[[nodiscard]] std::vector<TextItem> itemize(const QString &text);

} // namespace tallyfold::pdf
