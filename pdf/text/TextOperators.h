#pragma once

#include "pdf/syntax/ContentStream.h"
#include "pdf/text/ShapedLine.h"

#include <cstddef>
#include <string>

namespace tallyfold::pdf {

/// The name, with its slash, under which layer `layer` of font number `font` of a file is found in the
/// resources.
[[nodiscard]] std::string fontResourceName(std::size_t font, std::size_t layer = 0);

/// Appends a text object (PDF 1.7, 9.4) that shows `line`, its left end at `start` on the baseline. The text
/// state must be that of the beginning of a page.
void appendTextObject(const ShapedLine &line, Point start, ContentStream &content);

} // namespace tallyfold::pdf
