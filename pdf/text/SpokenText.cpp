#include "pdf/text/SpokenText.h"

#include <QChar>

#include <algorithm>
#include <string_view>

namespace tallyfold::pdf {

namespace {

bool isSpace(char16_t unit)
{
    return QChar::isSpace(unit);
}

bool needsTelling(std::u16string_view glyphText)
{
    return glyphText.empty() || std::any_of(glyphText.begin(), glyphText.end(), isSpace);
}

/// Whether glyph `index` is the one space between two words.
bool parts(const std::vector<const PlacedGlyph *> &glyphs, std::size_t index)
{
    if (glyphs[index]->text != u" " || index == 0 || index + 1 == glyphs.size()) {
        return false;
    }
    const std::u16string &before = glyphs[index - 1]->text;
    const std::u16string &after = glyphs[index + 1]->text;
    return (before.empty() || !isSpace(before.back())) && (after.empty() || !isSpace(after.front()));
}

} // namespace

std::vector<SpokenText> spokenTexts(std::span<const GlyphRun> runs)
{
    std::vector<SpokenText> spoken;
    std::vector<const PlacedGlyph *> glyphs;
    for (const GlyphRun &run : runs) {
        if (run.isRightToLeft) {
            return spoken;
        }
        for (const PlacedGlyph &glyph : run.glyphs) {
            glyphs.push_back(&glyph);
        }
    }
    SpokenText word;
    bool isNeeded = false;
    for (std::size_t index = 0; index <= glyphs.size(); ++index) {
        if (index == glyphs.size() || parts(glyphs, index)) {
            word.end = index;
            if (isNeeded && word.text.size() > 1) {
                spoken.push_back(word);
            }
            word = {index + 1, 0, {}};
            isNeeded = false;
        } else {
            isNeeded = isNeeded || needsTelling(glyphs[index]->text);
            word.text.append(glyphs[index]->text);
        }
    }
    return spoken;
}

} // namespace tallyfold::pdf
