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

/// One font of an output file. A code stands for a glyph together with the text it shows, so that one glyph
/// can show several texts, and .notdef the text of any character that no font has.
///
/// Some readers take the text of a code from the glyph it selects. So a composite font (PDF 1.7, 9.7) has
/// every glyph but once, and further texts of a glyph go into further composite fonts, the layers, all with
/// the same embedded program.
class EmbeddedFont {
public:
    /// Where a glyph with its text is found.
    struct Place {
        std::uint16_t layer = 0;
        std::uint16_t code = 0; ///< Two bytes.
        double advance = 0;     ///< What the file's width table says, in thousandths of the font size.
    };

    explicit EmbeddedFont(std::shared_ptr<const FontFace> face);

    [[nodiscard]] const FontFace &face() const;

    /// The place of `glyph` showing `text`, given out in order of first use. Digits get theirs in one go, so
    /// that files which differ in their numbers alone have the same font.
    [[nodiscard]] const Place &placeOf(std::uint32_t glyph, const std::u16string &text);

    /// Writes the font with all it needs, and appends the entries of its layers to `resources`; `ownNumber`
    /// is its number among the fonts of the file.
    void write(OutputObjects &objects, std::size_t ownNumber, EntryWriter &resources) const;

private:
    /// By code; the first one has the code 1.
    struct Layer {
        std::vector<std::uint32_t> glyphs;
        std::vector<std::u16string> texts;
    };

    const Place &add(std::uint32_t glyph, const std::u16string &text);

    std::shared_ptr<const FontFace> m_face;
    std::map<std::pair<std::uint32_t, std::u16string>, Place> m_places;
    std::map<std::uint32_t, std::uint16_t> m_layersOfGlyph; ///< In how many layers a glyph is.
    std::vector<Layer> m_layers;
    bool m_hasDigits = false;
};

} // namespace tallyfold::pdf
