#include "pdf/text/ScriptLanguage.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tallyfold::pdf {

namespace {

constexpr std::uint32_t tag(std::string_view name)
{
    std::uint32_t value = 0;
    for (const char ch : name) {
        value = (value << 8U) | static_cast<unsigned char>(ch);
    }
    return value;
}

/// One language that is written in the script: enough to find a font made for it.
constexpr std::array<std::pair<std::string_view, const char *>, 37> languages{{
    {"Arab", "ar"},     {"Armn", "hy"}, {"Beng", "bn"},    {"Bopo", "zh-tw"}, {"Cans", "iu"},
    {"Cher", "chr"},    {"Cyrl", "ru"}, {"Deva", "hi"},    {"Ethi", "am"},    {"Geor", "ka"},
    {"Grek", "el"},     {"Gujr", "gu"}, {"Guru", "pa"},    {"Hang", "ko"},    {"Hani", "zh-cn"},
    {"Hebr", "he"},     {"Hira", "ja"}, {"Kana", "ja"},    {"Khmr", "km"},    {"Knda", "kn"},
    {"Laoo", "lo"},     {"Mlym", "ml"}, {"Mong", "mn-cn"}, {"Mymr", "my"},    {"Nkoo", "nqo"},
    {"Orya", "or"},     {"Sinh", "si"}, {"Syrc", "syr"},   {"Taml", "ta"},    {"Telu", "te"},
    {"Tfng", "ber-ma"}, {"Thaa", "dv"}, {"Thai", "th"},    {"Tibt", "bo"},    {"Yiii", "ii"},
    {"Vaii", "vai"},    {"Latn", "en"},
}};

bool hasOneFrom(const QString &text, char16_t first, char16_t last)
{
    return std::any_of(text.begin(), text.end(), [=](QChar ch) { return ch >= first && ch <= last; });
}

} // namespace

std::string languageFor(std::uint32_t script, const QString &text)
{
    if (script == tag("Hani")) {
        if (hasOneFrom(text, u'\u3041', u'\u30ff')) {
            return "ja";
        }
        if (hasOneFrom(text, u'\uac00', u'\ud7a3')) {
            return "ko";
        }
    }
    for (const auto &[name, language] : languages) {
        if (tag(name) == script) {
            return language;
        }
    }
    return "en";
}

} // namespace tallyfold::pdf
