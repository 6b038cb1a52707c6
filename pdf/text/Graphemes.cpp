#include "pdf/text/Graphemes.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/unistr.h>

namespace tallyfold::pdf {

namespace {

/// Text of plain letters needs no tables; a carriage return may join with the next character.
bool isPlain(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch >= u' ' && ch < u'\x7f'; });
}

std::unique_ptr<icu::BreakIterator> characterIterator()
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    return U_FAILURE(status) ? nullptr : std::move(characters);
}

} // namespace

std::vector<qsizetype> graphemeBoundaries(const QString &text, qsizetype start, qsizetype length)
{
    std::vector<qsizetype> boundaries;
    const auto characters = isPlain(QStringView(text).sliced(start, length)) ? nullptr : characterIterator();
    if (!characters) {
        for (qsizetype at = start; at <= start + length; ++at) {
            boundaries.push_back(at);
        }
        return boundaries;
    }
    // An alias: `text` outlives the iterator.
    const icu::UnicodeString stretch(false, reinterpret_cast<const char16_t *>(text.utf16()) + start,
                                     static_cast<int32_t>(length));
    characters->setText(stretch);
    for (int32_t at = characters->first(); at != icu::BreakIterator::DONE; at = characters->next()) {
        boundaries.push_back(start + at);
    }
    return boundaries;
}

} // namespace tallyfold::pdf
