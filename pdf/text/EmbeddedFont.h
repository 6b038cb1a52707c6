#pragma once

#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/OutputObjects.h"
#include "pdf/text/FontFace.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tallyfold::pdf {

/// One font of an output file. A code stands for a glyph with the text it shows, so that one glyph can show
/// several texts, and .notdef any character that no font has.
///
/// Some readers map glyphs to text rather than codes. So a composite font (PDF 1.7, 9.7) has each glyph
/// once, and further texts of a glyph go into further composite fonts, the layers, which share the embedded
/// program.
class EmbeddedFont {
public:
    /// The layer and code of a glyph with its text.
    struct Place {
        std::uint16_t layer = 0;
        std::uint16_t code = 0; ///< Two bytes.
        double advance = 0;     ///< The width in the file, in thousandths of the font size.
    };

    explicit EmbeddedFont(std::shared_ptr<const FontFace> face);

    [[nodiscard]] const FontFace &face() const;

    /// The place of `glyph` with the text `text`; codes are assigned in order of first use. All digits are
    /// assigned with the first one, so that files which differ only in their numbers have equal fonts.
    [[nodiscard]] const Place &placeOf(std::uint32_t glyph, const std::u16string &text);

    /// Writes the font with its descriptor, program and maps, and appends the entries of its layers to
    /// `resources`; `ownNumber` is its number among the fonts of the file.
    void write(OutputObjects &objects, std::size_t ownNumber, EntryWriter &resources) const;

private:
    /// Indexed by code, from 1.
    struct Layer {
        std::vector<std::uint32_t> glyphs;
        std::vector<std::u16string> texts;
    };

    const Place &add(std::uint32_t glyph, const std::u16string &text);

    std::shared_ptr<const FontFace> m_face;
    std::map<std::pair<std::uint32_t, std::u16string>, Place> m_places;
    std::map<std::uint32_t, std::uint16_t> m_layersOfGlyph; ///< The number of layers that have the glyph.
    std::vector<Layer> m_layers;
    bool m_hasDigits = false;
};

} // namespace tallyfold::pdf
