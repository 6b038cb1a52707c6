#pragma once

#include "pdf/syntax/ContentStream.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <string>

namespace tallyfold::pdf {

/// The line ending named at place `index` of `endings` (PDF 1.7, table 176): an array of two names, or one
/// name for both ends; "/None" for anything else.
[[nodiscard]] std::string endingAt(QPDFObjectHandle endings, int index);

/// How far a line ending reaches from the end of a line of this width, in points.
[[nodiscard]] double lineEndingSize(double lineWidth);

/// Appends the operators that draw the ending `name` at `end` of a line that comes from `from`, in the
/// colours already chosen; closed shapes are filled where `isFilled`.
void appendLineEnding(ContentStream &content, const std::string &name, Point end, Point from,
                      double lineWidth, bool isFilled);

} // namespace tallyfold::pdf
