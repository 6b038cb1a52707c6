#pragma once

#include <QString>

#include <vector>

namespace tallyfold::pdf {

/// The boundaries of the extended grapheme clusters (UAX #29) of a range of `text`, from the start of the
/// first to the end of the last, in UTF-16 units of the whole text.
[[nodiscard]] std::vector<qsizetype> graphemeBoundaries(const QString &text, qsizetype start,
                                                        qsizetype length);

} // namespace tallyfold::pdf
