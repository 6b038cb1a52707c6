#pragma once

#include "pdf/syntax/ContentStream.h"
#include "pdf/text/ShapedLine.h"

#include <cstddef>
#include <string>

namespace tallyfold::pdf {

/// The resource name, with its slash, of layer `layer` of font number `font`.
[[nodiscard]] std::string fontResourceName(std::size_t font, std::size_t layer = 0);

/// Appends a text object (PDF 1.7, 9.4) that shows `line` from `start` on its baseline. The text state must
/// be the initial one.
void appendTextObject(const ShapedLine &line, Point start, ContentStream &content);

} // namespace tallyfold::pdf
