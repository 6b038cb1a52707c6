#pragma once

#include "pdf/text/FontCatalog.h"
#include "pdf/text/FontFace.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// A glyph as shaping positions it. Lengths in thousandths of the font size.
struct PlacedGlyph {
    std::uint32_t glyph = 0;
    double advance = 0;
    double xOffset = 0;
    double yOffset = 0;
    std::u16string text; ///< Its part of the text of its cluster; may be empty.
};

/// Glyphs of one font in visual order.
struct GlyphRun {
    std::shared_ptr<const FontFace> face;
    bool isRightToLeft = false;
    std::vector<PlacedGlyph> glyphs;
};

/// Shapes lines of text: runs in visual order (UAX #9), kerning, ligatures, and fallback to other fonts of
/// the catalogue.
class TextShaper {
public:
    /// `catalog` must outlive this.
    explicit TextShaper(FontCatalog &catalog);
    ~TextShaper();
    TextShaper(const TextShaper &) = delete;
    TextShaper &operator=(const TextShaper &) = delete;

    /// The runs of `text`, which has no control characters, in the font `base`, which was requested as
    /// `postScriptName`. A character that no font has becomes .notdef.
    [[nodiscard]] std::vector<GlyphRun>
    shape(const QString &text, const std::shared_ptr<const FontFace> &base, const QString &postScriptName);

private:
    struct Parts;
    FontCatalog *m_catalog;
    std::unique_ptr<Parts> m_parts;
};

} // namespace tallyfold::pdf
