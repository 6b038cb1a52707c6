#pragma once

#include "pdf/syntax/ContentStream.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <string>

namespace tallyfold::pdf {

/// The line ending number `index` (PDF 1.7, table 176) of `endings`, which is an array of two names or one
/// name for both ends; "/None" for anything else.
[[nodiscard]] std::string endingAt(QPDFObjectHandle endings, int index);

/// The length of a line ending, in points, for this line width.
[[nodiscard]] double lineEndingSize(double lineWidth);

/// Draws the ending `name` at `end` of a line that comes from `from`, in the current colours; closed shapes
/// are filled if `isFilled`.
void appendLineEnding(ContentStream &content, const std::string &name, Point end, Point from,
                      double lineWidth, bool isFilled);

} // namespace tallyfold::pdf
