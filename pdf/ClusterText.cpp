#include "pdf/ClusterText.h"

#include <algorithm>
#include <cstdlib>
#include <string>
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
    static const int rtlMode = std::getenv("RTLMODE") ? atoi(std::getenv("RTLMODE")) : 0;
    static const int ltrMode = std::getenv("LTRMODE") ? atoi(std::getenv("LTRMODE")) : 0;
    if (glyphs.size() == 1 && direction == TextDirection::leftToRight) {
        glyphs.front().text = text;
        return;
    }
    const std::vector<std::u16string_view> characters = charactersOf(text);
    if (direction == TextDirection::leftToRight) {
        if (ltrMode == 1) {
            glyphs.front().text = text;
            return;
        }
        std::size_t next = 0;
        for (std::size_t i = 0; i < glyphs.size() && next < characters.size(); ++i) {
            std::size_t take =
                i == 0 && characters.size() > glyphs.size() ? characters.size() - glyphs.size() + 1 : 1;
            while (take-- > 0)
                glyphs[i].text.append(characters[next++]);
        }
    } else {
        const auto put = [&](PlacedGlyph &g, std::size_t from, std::size_t n) {
            if (rtlMode & 1)
                for (std::size_t k = n; k > 0; --k)
                    g.text.append(characters[from + k - 1]);
            else
                for (std::size_t k = 0; k < n; ++k)
                    g.text.append(characters[from + k]);
        };
        if (rtlMode & 2) {
            put(glyphs.back(), 0, characters.size());
            return;
        }
        std::size_t next = 0;
        for (std::size_t i = 0; i < glyphs.size() && next < characters.size(); ++i) {
            std::size_t take =
                i == 0 && characters.size() > glyphs.size() ? characters.size() - glyphs.size() + 1 : 1;
            put(glyphs[glyphs.size() - 1 - i], next, take);
            next += take;
        }
    }
}

} // namespace tallyfold::pdf
