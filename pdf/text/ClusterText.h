#pragma once

#include "pdf/text/TextShaper.h"

#include <span>
#include <string_view>

namespace tallyfold::pdf {

/// The direction of a run of text.
enum class TextDirection { leftToRight, rightToLeft };

/// Distributes the text of a cluster over its glyphs, which are in order from left to right: readers
/// concatenate the texts of the glyphs of a line. Surplus glyphs get no text.
void shareText(std::u16string_view text, TextDirection direction, std::span<PlacedGlyph> glyphs);

} // namespace tallyfold::pdf
