#include "pdf/text/ActualText.h"

#include <QChar>

#include <algorithm>
#include <string_view>

namespace tallyfold::pdf {

namespace {

bool isSpace(char16_t unit)
{
    return QChar::isSpace(unit);
}

bool needsActualText(std::u16string_view glyphText)
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

std::vector<ActualText> actualTexts(std::span<const GlyphRun> runs)
{
    std::vector<ActualText> found;
    std::vector<const PlacedGlyph *> glyphs;
    for (const GlyphRun &run : runs) {
        if (run.isRightToLeft) {
            return found;
        }
        for (const PlacedGlyph &glyph : run.glyphs) {
            glyphs.push_back(&glyph);
        }
    }
    ActualText word;
    bool isNeeded = false;
    for (std::size_t index = 0; index <= glyphs.size(); ++index) {
        if (index == glyphs.size() || parts(glyphs, index)) {
            word.end = index;
            if (isNeeded && word.text.size() > 1) {
                found.push_back(word);
            }
            word = {index + 1, 0, {}};
            isNeeded = false;
        } else {
            isNeeded = isNeeded || needsActualText(glyphs[index]->text);
            word.text.append(glyphs[index]->text);
        }
    }
    return found;
}

} // namespace tallyfold::pdf
