#include "pdf/text/TextShaper.h"

#include "pdf/text/ClusterText.h"
#include "pdf/text/Graphemes.h"
#include "pdf/text/ScriptLanguage.h"
#include "pdf/text/TextItems.h"

#include <QList>

#include <algorithm>
#include <array>
#include <harfbuzz/hb.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

namespace tallyfold::pdf {

namespace {

using Face = std::shared_ptr<const FontFace>;

/// A part of an item in one font.
struct FontStretch {
    qsizetype start = 0;
    qsizetype end = 0;
    Face face;
};

/// Characters that are shaped independently, from left to right, in every context. Most lines have no others
/// and need one check per character.
bool isSimple(QChar ch)
{
    const char16_t unit = ch.unicode();
    return (unit >= u' ' && unit < u'\x7f') || (unit >= u'\xa0' && unit <= u'\u024f' && unit != u'\xad') ||
           (unit >= u'\u2010' && unit <= u'\u2027') || unit == u'\u20ac' || unit == u'\u2122';
}

bool isSimpleIn(const FontFace &face, const QString &text)
{
    return face.hasAscii() && std::all_of(text.begin(), text.end(), [&face](QChar ch) {
               return isSimple(ch) && (ch < u'\x7f' || face.has(ch.unicode()));
           });
}

bool hasAll(const FontFace &face, const std::u32string &characters)
{
    return std::all_of(characters.begin(), characters.end(), [&](char32_t ch) { return face.has(ch); });
}

bool hasOneOf(const FontFace &face, const std::vector<std::u32string> &spellings)
{
    return std::any_of(spellings.begin(), spellings.end(),
                       [&](const std::u32string &spelling) { return hasAll(face, spelling); });
}

/// The canonically equivalent spellings of a grapheme cluster: as given, composed, decomposed.
/// Default-ignorable characters need no glyph and are left out.
std::vector<std::u32string> spellingsOf(QStringView cluster)
{
    std::u32string asItIs;
    for (const char32_t character : cluster.toUcs4()) {
        if (u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_DEFAULT_IGNORABLE_CODE_POINT) == 0) {
            asItIs.push_back(character);
        }
    }
    std::vector<std::u32string> spellings{asItIs};
    if (asItIs.empty() || (asItIs.size() == 1 && asItIs.front() < U'\xc0')) {
        return spellings;
    }
    UErrorCode status = U_ZERO_ERROR;
    for (const icu::Normalizer2 *form :
         {icu::Normalizer2::getNFCInstance(status), icu::Normalizer2::getNFDInstance(status)}) {
        if (U_FAILURE(status)) {
            return spellings;
        }
        icu::UnicodeString spelling;
        for (const char32_t character : asItIs) {
            spelling.append(static_cast<UChar32>(character));
        }
        const icu::UnicodeString normalized = form->normalize(spelling, status);
        std::u32string characters;
        for (int32_t at = 0; at < normalized.length(); at = normalized.moveIndex32(at, 1)) {
            characters.push_back(static_cast<char32_t>(normalized.char32At(at)));
        }
        if (U_SUCCESS(status) && characters != asItIs) {
            spellings.push_back(characters);
        }
    }
    return spellings;
}

/// The font for a grapheme cluster, preferably one that covers all of it.
Face faceFor(FontCatalog &catalog, const std::vector<std::u32string> &spellings, const Face &base,
             const Face &last, const QString &postScriptName, const std::string &language)
{
    if (last && spellings.front().empty()) { // Invisible, so the font need not change.
        return last;
    }
    if (hasOneOf(*base, spellings)) {
        return base;
    }
    // Punctuation between words in another font stays in that font.
    if (last && hasOneOf(*last, spellings)) {
        return last;
    }
    if (Face other = catalog.faceCovering(spellings, postScriptName, language)) {
        return other;
    }
    const std::u32string first = spellings.front().substr(0, 1);
    if (base->has(first.front())) {
        return base;
    }
    if (Face partly = catalog.faceCovering(std::array{first}, postScriptName, language)) {
        return partly;
    }
    const Face box = catalog.faceWithVisibleNotdef(postScriptName);
    return box && !base->hasVisibleNotdef() ? box : base;
}

/// Splits an item by font, between grapheme clusters.
std::vector<FontStretch> byFont(FontCatalog &catalog, const QString &text, const TextItem &item,
                                const Face &base, const QString &postScriptName)
{
    std::vector<FontStretch> stretches;
    const std::string language = languageFor(item.script, text);
    const std::vector<qsizetype> clusters = graphemeBoundaries(text, item.start, item.length);
    for (std::size_t index = 0; index + 1 < clusters.size(); ++index) {
        const qsizetype start = clusters[index];
        const qsizetype end = clusters[index + 1];
        const Face last = stretches.empty() ? nullptr : stretches.back().face;
        const Face face = faceFor(catalog, spellingsOf(QStringView(text).sliced(start, end - start)), base,
                                  last, postScriptName, language);
        if (face == last) {
            stretches.back().end = end;
        } else {
            stretches.push_back({start, end, face});
        }
    }
    if (item.isRightToLeft) {
        std::reverse(stretches.begin(), stretches.end());
    }
    return stretches;
}

struct BufferDestroyer {
    void operator()(hb_buffer_t *buffer) const
    {
        hb_buffer_destroy(buffer);
    }
};

/// Fixed-pitch fonts have a cell for each letter; a ligature would squeeze "ffi" into one.
constexpr std::array<hb_feature_t, 1> noLigatures{
    {{HB_TAG('l', 'i', 'g', 'a'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END}}};

} // namespace

struct TextShaper::Parts {
    std::unique_ptr<hb_buffer_t, BufferDestroyer> buffer{hb_buffer_create()};

    void fill(const QString &text, const FontStretch &stretch, const TextItem &item,
              hb_buffer_flags_t treatmentOfInvisible) const;
    GlyphRun run(const QString &text, const FontStretch &stretch, const TextItem &item);
};

void TextShaper::Parts::fill(const QString &text, const FontStretch &stretch, const TextItem &item,
                             hb_buffer_flags_t treatmentOfInvisible) const
{
    hb_buffer_t *const shaped = buffer.get();
    hb_buffer_reset(shaped);
    // Finer than grapheme clusters: an accent with its own glyph keeps its own text.
    hb_buffer_set_cluster_level(shaped, HB_BUFFER_CLUSTER_LEVEL_MONOTONE_CHARACTERS);
    hb_buffer_set_flags(shaped, treatmentOfInvisible);
    hb_buffer_add_utf16(shaped, text.utf16(), static_cast<int>(text.size()),
                        static_cast<unsigned>(stretch.start), static_cast<int>(stretch.end - stretch.start));
    // The language is not set: that of the locale would change the shapes of letters in some fonts.
    hb_buffer_set_direction(shaped, item.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(shaped, hb_script_from_iso15924_tag(item.script));
    const bool hasLigatures = !stretch.face->isFixedPitch();
    hb_shape(stretch.face->font(), shaped, noLigatures.data(),
             hasLigatures ? 0U : unsigned{noLigatures.size()});
}

GlyphRun TextShaper::Parts::run(const QString &text, const FontStretch &stretch, const TextItem &item)
{
    hb_buffer_t *const shaped = buffer.get();
    // Default-ignorable characters have no glyph, and their text goes to a neighbour. Alone they take an
    // empty glyph.
    fill(text, stretch, item, HB_BUFFER_FLAG_REMOVE_DEFAULT_IGNORABLES);
    if (hb_buffer_get_length(shaped) == 0) {
        fill(text, stretch, item, HB_BUFFER_FLAG_DEFAULT);
    }
    unsigned count = 0;
    const hb_glyph_info_t *infos = hb_buffer_get_glyph_infos(shaped, &count);
    const hb_glyph_position_t *positions = hb_buffer_get_glyph_positions(shaped, nullptr);
    GlyphRun result{stretch.face, item.isRightToLeft, {}};
    result.glyphs.reserve(count);
    for (unsigned index = 0; index < count; ++index) {
        const FontFace &face = *stretch.face;
        result.glyphs.push_back({infos[index].codepoint,
                                 face.thousandths(positions[index].x_advance),
                                 face.thousandths(positions[index].x_offset),
                                 face.thousandths(positions[index].y_offset),
                                 {}});
    }
    // A cluster ends where the next one begins.
    const std::u16string_view units(reinterpret_cast<const char16_t *>(text.utf16()),
                                    static_cast<std::size_t>(text.size()));
    const TextDirection direction =
        item.isRightToLeft ? TextDirection::rightToLeft : TextDirection::leftToRight;
    auto textEnd = static_cast<std::size_t>(item.isRightToLeft ? stretch.end : 0);
    for (unsigned first = 0; first < count;) {
        unsigned end = first + 1;
        while (end < count && infos[end].cluster == infos[first].cluster) {
            ++end;
        }
        const std::size_t start = infos[first].cluster;
        if (!item.isRightToLeft) {
            textEnd = end < count ? infos[end].cluster : static_cast<std::size_t>(stretch.end);
        }
        shareText(units.substr(start, textEnd - start), direction,
                  std::span(result.glyphs).subspan(first, end - first));
        textEnd = start;
        first = end;
    }
    return result;
}

TextShaper::TextShaper(FontCatalog &catalog) : m_catalog(&catalog), m_parts(std::make_unique<Parts>()) {}

TextShaper::~TextShaper() = default;

std::vector<GlyphRun> TextShaper::shape(const QString &text, const Face &base, const QString &postScriptName)
{
    std::vector<GlyphRun> runs;
    if (text.isEmpty()) {
        return runs;
    }
    if (isSimpleIn(*base, text)) {
        const TextItem whole{0, text.size(), false, HB_SCRIPT_LATIN};
        runs.push_back(m_parts->run(text, {0, text.size(), base}, whole));
        return runs;
    }
    for (const TextItem &item : itemize(text)) {
        for (const FontStretch &stretch : byFont(*m_catalog, text, item, base, postScriptName)) {
            runs.push_back(m_parts->run(text, stretch, item));
        }
    }
    return runs;
}

} // namespace tallyfold::pdf
