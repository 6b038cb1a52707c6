#pragma once

#include "pdf/text/ShapedLine.h"
#include "pdf/text/TextShaper.h"

#include <span>
#include <vector>

namespace tallyfold::pdf {

/// The words of a line made of `runs` that need an actual text (PDF 1.7, 14.9.4), because the texts of their
/// glyphs do not add up to theirs: several glyphs show one character, or there is white space other than one
/// space between two words, which readers take for a gap. A line with text from right to left has none:
/// readers reorder that themselves, and would reverse an actual text as well.
[[nodiscard]] std::vector<ActualText> actualTexts(std::span<const GlyphRun> runs);

} // namespace tallyfold::pdf
