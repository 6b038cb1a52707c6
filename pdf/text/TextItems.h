#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace tallyfold::pdf {

/// A stretch of text that one script and one direction hold for, so that it can be shaped in one go.
struct TextItem {
    qsizetype start = 0; ///< In UTF-16 units.
    qsizetype length = 0;
    bool isRightToLeft = false;
    std::uint32_t script = 0; ///< ISO 15924 tag, as HarfBuzz takes it.
};

/// The items of one line from left to right (UAX #9 and #24); the line's direction is that of its first
/// strong character, left to right where it has none.
[[nodiscard]] std::vector<TextItem> itemize(const QString &text);

} // namespace tallyfold::pdf
