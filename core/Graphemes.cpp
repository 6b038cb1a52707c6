#include "core/Graphemes.h"

#include <algorithm>
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/unistr.h>

namespace tallyfold {

namespace {

/// Texts of plain letters need no tables; a carriage return may join with what follows it.
bool isPlain(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch >= u' ' && ch < u'\x7f'; });
}

} // namespace

std::vector<qsizetype> graphemeBoundaries(const QString &text)
{
    std::vector<qsizetype> boundaries;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (isPlain(text) || U_FAILURE(status)) {
        for (qsizetype index = 0; index <= text.size(); ++index) {
            boundaries.push_back(index);
        }
        return boundaries;
    }
    // An alias: `text` outlives the walk.
    const icu::UnicodeString alias(false, reinterpret_cast<const char16_t *>(text.utf16()),
                                   static_cast<int32_t>(text.size()));
    characters->setText(alias);
    for (int32_t at = characters->first(); at != icu::BreakIterator::DONE; at = characters->next()) {
        boundaries.push_back(at);
    }
    return boundaries;
}

QString firstGraphemes(const QString &text, std::int64_t count)
{
    if (text.size() <= count) { // No more characters than units.
        return text;
    }
    const std::vector<qsizetype> boundaries = graphemeBoundaries(text);
    const auto last = static_cast<std::size_t>(std::max<std::int64_t>(count, 0));
    return last < boundaries.size() ? text.first(boundaries[last]) : text;
}

bool isNewline(QChar ch)
{
    return (ch >= u'\n' && ch <= u'\r') || ch == u'\x85' || ch == QChar(0x2028) || ch == QChar(0x2029);
}

} // namespace tallyfold
