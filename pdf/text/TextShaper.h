#pragma once

#include "pdf/text/FontCatalog.h"
#include "pdf/text/FontFace.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// A glyph where shaping puts it. Lengths in thousandths of the font size.
struct PlacedGlyph {
    std::uint32_t glyph = 0;
    double advance = 0;
    double xOffset = 0;
    double yOffset = 0;
    std::u16string text; ///< What it shows, or its share of what it shows with its neighbours; may be empty.
};

/// Glyphs of one font, from left to right.
struct GlyphRun {
    std::shared_ptr<const FontFace> face;
    bool isRightToLeft = false;
    std::vector<PlacedGlyph> glyphs;
};

/// Turns a line of text into glyphs: its stretches in their order from left to right (UAX #9), kerned, with
/// ligatures, characters that the font lacks taken from other fonts of the catalogue.
class TextShaper {
public:
    /// `catalog` must outlive this.
    explicit TextShaper(FontCatalog &catalog);
    ~TextShaper();
    TextShaper(const TextShaper &) = delete;
    TextShaper &operator=(const TextShaper &) = delete;

    /// `text` in the font `base`, which was asked for as `postScriptName`. There are no control characters in
    /// `text`. A character that no font has is shown as a box.
    [[nodiscard]] std::vector<GlyphRun>
    shape(const QString &text, const std::shared_ptr<const FontFace> &base, const QString &postScriptName);

private:
    struct Parts;
    FontCatalog *m_catalog;
    std::unique_ptr<Parts> m_parts;
};

} // namespace tallyfold::pdf
