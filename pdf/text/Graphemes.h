#pragma once

#include <QString>

#include <vector>

namespace tallyfold::pdf {

/// Where the user-perceived characters (extended grapheme clusters, UAX #29) of a stretch of `text` begin, in
/// UTF-16 units of the whole text, and at last where the stretch ends.
[[nodiscard]] std::vector<qsizetype> graphemeBoundaries(const QString &text, qsizetype start,
                                                        qsizetype length);

} // namespace tallyfold::pdf
