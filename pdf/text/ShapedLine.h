#pragma once

#include "pdf/text/EmbeddedFont.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// A positioned glyph of a line. Lengths in thousandths of the font size.
struct ShapedGlyph {
    std::uint16_t font = 0; ///< Number of the font among those of the file.
    EmbeddedFont::Place place;
    double advance = 0; ///< From shaping, kerning included.
    double xOffset = 0;
    double yOffset = 0;
};

/// The actual text (PDF 1.7, 14.9.4) of the glyphs from `first` up to but not including `end`.
struct ActualText {
    std::size_t first = 0;
    std::size_t end = 0;
    std::u16string text;
};

/// A shaped line of text. Width, ascent and descent in points; ascent and descent are the maximum of its
/// fonts, or those of the requested font for an empty text.
struct ShapedLine {
    double width = 0;
    double ascent = 0;
    double descent = 0; ///< Below the baseline, a positive number.
    double size = 0;
    std::vector<ShapedGlyph> glyphs; ///< From left to right.
    std::vector<ActualText>
        actualTexts; ///< Where the texts of the glyphs do not suffice; from left to right.
};

} // namespace tallyfold::pdf
