#include "pdf/text/TextItems.h"

#include <algorithm>
#include <memory>
#include <unicode/ubidi.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

namespace tallyfold::pdf {

namespace {

constexpr std::uint32_t tag(char a, char b, char c, char d)
{
    return (static_cast<std::uint32_t>(a) << 24U) | (static_cast<std::uint32_t>(b) << 16U) |
           (static_cast<std::uint32_t>(c) << 8U) | static_cast<std::uint32_t>(d);
}

std::uint32_t tagOf(UScriptCode script)
{
    const char *name = uscript_getShortName(script);
    return name != nullptr ? tag(name[0], name[1], name[2], name[3]) : tag('Z', 'y', 'y', 'y');
}

const char16_t *units(const QString &text)
{
    return reinterpret_cast<const char16_t *>(text.utf16());
}

/// Splits a run of one direction by script; common and inherited characters belong to the script before
/// them.
std::vector<TextItem> byScript(const QString &text, qsizetype start, qsizetype length, bool isRightToLeft)
{
    std::vector<TextItem> items;
    UScriptCode current = USCRIPT_COMMON;
    qsizetype itemStart = start;
    const qsizetype end = start + length;
    const icu::UnicodeString alias(false, units(text), static_cast<int32_t>(text.size()));
    for (qsizetype at = start; at < end;) {
        const qsizetype characterStart = at;
        const UChar32 character = alias.char32At(static_cast<int32_t>(at));
        at += character > 0xffff ? 2 : 1;
        UErrorCode status = U_ZERO_ERROR;
        const UScriptCode script = uscript_getScript(character, &status);
        if (script == USCRIPT_COMMON || script == USCRIPT_INHERITED || script == current ||
            U_FAILURE(status)) {
            continue;
        }
        if (current != USCRIPT_COMMON) {
            items.push_back({itemStart, characterStart - itemStart, isRightToLeft, tagOf(current)});
            itemStart = characterStart;
        }
        current = script;
    }
    items.push_back({itemStart, end - itemStart, isRightToLeft, tagOf(current)});
    if (isRightToLeft) {
        std::reverse(items.begin(), items.end());
    }
    return items;
}

struct BidiCloser {
    void operator()(UBiDi *bidi) const
    {
        ubidi_close(bidi);
    }
};

} // namespace

std::vector<TextItem> itemize(const QString &text)
{
    const bool isAscii = std::all_of(text.begin(), text.end(), [](QChar ch) { return ch < u'\x80'; });
    if (isAscii) {
        return {{0, text.size(), false, tag('L', 'a', 't', 'n')}};
    }
    std::vector<TextItem> items;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBiDi, BidiCloser> bidi(ubidi_open());
    ubidi_setPara(bidi.get(), units(text), static_cast<int32_t>(text.size()), UBIDI_DEFAULT_LTR, nullptr,
                  &status);
    const int32_t runs = ubidi_countRuns(bidi.get(), &status);
    if (U_FAILURE(status)) {
        return byScript(text, 0, text.size(), false);
    }
    for (int32_t run = 0; run < runs; ++run) {
        int32_t start = 0;
        int32_t length = 0;
        const bool isRightToLeft = ubidi_getVisualRun(bidi.get(), run, &start, &length) == UBIDI_RTL;
        for (const TextItem &item : byScript(text, start, length, isRightToLeft)) {
            items.push_back(item);
        }
    }
    return items;
}

} // namespace tallyfold::pdf
