#pragma once

#include "pdf/text/ShapedLine.h"
#include "pdf/text/TextShaper.h"

#include <span>
#include <vector>

namespace tallyfold::pdf {

/// Where readers have to be told the text of a line made of `runs`, because its glyphs one by one do not say
/// it: several glyphs show one character together, or there is white space other than one space between two
/// words, which readers take for a mere gap. Only words concerned are told, and none of a line with text from
/// right to left: readers put that into its order by themselves, and would turn round what they are told as
/// well.
[[nodiscard]] std::vector<SpokenText> spokenTexts(std::span<const GlyphRun> runs);

} // namespace tallyfold::pdf
