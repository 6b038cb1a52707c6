#include "pdf/text/ClusterText.h"

#include <string_view>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// The characters of `text`, each one or two UTF-16 units.
std::vector<std::u16string_view> charactersOf(std::u16string_view text)
{
    std::vector<std::u16string_view> characters;
    for (std::size_t at = 0; at < text.size();) {
        const bool isPair =
            at + 1 < text.size() && (text[at] & 0xfc00) == 0xd800 && (text[at + 1] & 0xfc00) == 0xdc00;
        characters.push_back(text.substr(at, isPair ? 2 : 1));
        at += characters.back().size();
    }
    return characters;
}

} // namespace

void shareText(std::u16string_view text, TextDirection direction, std::span<PlacedGlyph> glyphs)
{
    const std::vector<std::u16string_view> characters = charactersOf(text);
    std::size_t next = 0;
    for (std::size_t place = 0; place < glyphs.size() && next < characters.size(); ++place) {
        // The first glyph in reading order gets the surplus characters.
        const bool isFirst = place == 0 && characters.size() > glyphs.size();
        const std::size_t end = next + (isFirst ? characters.size() - glyphs.size() + 1 : 1);
        PlacedGlyph &glyph =
            glyphs[direction == TextDirection::leftToRight ? place : glyphs.size() - 1 - place];
        for (; next < end; ++next) {
            glyph.text.append(characters[next]);
        }
    }
}

} // namespace tallyfold::pdf
