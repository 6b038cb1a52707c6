#pragma once

#include "pdf/text/EmbeddedFont.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// A glyph in its place on the line, as it is written. Lengths in thousandths of the font size.
struct ShapedGlyph {
    std::uint16_t font = 0; ///< Number of the font among those of the file.
    EmbeddedFont::Place place;
    double advance = 0; ///< What shaping says: kerning, marks.
    double xOffset = 0;
    double yOffset = 0;
};

/// The text that stands for the glyphs `first` up to but not including `end` of a line (PDF 1.7, 14.9.4).
struct ActualText {
    std::size_t first = 0;
    std::size_t end = 0;
    std::u16string text;
};

/// A measured line of text. Width, ascent and descent in points; ascent and descent are the largest of the
/// fonts in it, of an empty text those of the font that was asked for.
struct ShapedLine {
    double width = 0;
    double ascent = 0;
    double descent = 0; ///< Below the baseline, a positive number.
    double size = 0;
    std::vector<ShapedGlyph> glyphs;     ///< From left to right.
    std::vector<ActualText> actualTexts; ///< Where the glyphs alone do not say it; from left to right.
};

} // namespace tallyfold::pdf
