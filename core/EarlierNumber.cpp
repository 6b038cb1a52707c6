#include "core/EarlierNumber.h"

#include "core/Graphemes.h"

#include <algorithm>
#include <memory>
#include <unicode/regex.h>
#include <unicode/unistr.h>

namespace tallyfold {

namespace {

constexpr double maxStripDepth = 90;

/// The expression, compiled once; null if ICU rejects it, in which case nothing is found.
const icu::RegexPattern *pattern()
{
    static const std::unique_ptr<icu::RegexPattern> compiled = [] {
        UErrorCode status = U_ZERO_ERROR;
        UParseError where;
        const icu::UnicodeString text(u"\\b[A-Z][A-Z0-9]{0,11}[-_ ]?(?:0[0-9]{3,11}|[1-9][0-9]{5,11})\\b");
        std::unique_ptr<icu::RegexPattern> made(
            icu::RegexPattern::compile(text, UREGEX_UWORD, where, status));
        return U_SUCCESS(status) ? std::move(made) : nullptr;
    }();
    return compiled.get();
}

} // namespace

std::array<pdf::Rect, 4> earlierNumberStrips(const pdf::Rect &cropBox)
{
    const double depth = std::min({maxStripDepth, cropBox.width() / 2, cropBox.height() / 2});
    return {{{cropBox.minX, cropBox.minY, cropBox.maxX, cropBox.minY + depth},
             {cropBox.minX, cropBox.maxY - depth, cropBox.maxX, cropBox.maxY},
             {cropBox.minX, cropBox.minY, cropBox.minX + depth, cropBox.maxY},
             {cropBox.maxX - depth, cropBox.minY, cropBox.maxX, cropBox.maxY}}};
}

std::optional<QString> earlierNumberIn(const QString &text)
{
    if (pattern() == nullptr) {
        return std::nullopt;
    }
    const icu::UnicodeString subject(false, reinterpret_cast<const char16_t *>(text.utf16()),
                                     static_cast<int32_t>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::RegexMatcher> matcher(pattern()->matcher(subject, status));
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    const std::vector<qsizetype> characters = graphemeBoundaries(text);
    const auto isBoundary = [&characters](int32_t at) {
        return std::binary_search(characters.begin(), characters.end(), qsizetype{at});
    };
    while (matcher->find(status) && U_SUCCESS(status)) {
        const int32_t start = matcher->start(status);
        const int32_t end = matcher->end(status);
        // A digit with a combining mark is a different character.
        bool isWhole = U_SUCCESS(status);
        for (int32_t at = start; isWhole && at <= end; ++at) {
            isWhole = isBoundary(at);
        }
        if (isWhole) {
            return text.sliced(start, end - start).trimmed();
        }
    }
    return std::nullopt;
}

} // namespace tallyfold
