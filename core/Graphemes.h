#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace tallyfold {

/// The first `count` user-perceived characters of `text` (extended grapheme clusters, UAX #29).
[[nodiscard]] QString firstGraphemes(const QString &text, std::int64_t count);

/// The offsets, in UTF-16 code units, at which user-perceived characters of `text` begin, then its length.
[[nodiscard]] std::vector<qsizetype> graphemeBoundaries(const QString &text);

/// Whether `ch` ends a line: line feed, vertical tab, form feed, carriage return, next line, and the
/// line and paragraph separators.
[[nodiscard]] bool isNewline(QChar ch);

} // namespace tallyfold
