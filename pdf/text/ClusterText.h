#pragma once

#include "pdf/text/TextShaper.h"

#include <span>
#include <string_view>

namespace tallyfold::pdf {

/// Which way a run of text goes.
enum class TextDirection { leftToRight, rightToLeft };

/// Shares the text of a cluster out among its glyphs, which are in their order from left to right: readers
/// string together what the glyphs of a line show, one after the other. Glyphs for which no character is left
/// get none.
void shareText(std::u16string_view text, TextDirection direction, std::span<PlacedGlyph> glyphs);

} // namespace tallyfold::pdf
