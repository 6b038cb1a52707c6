#include "pdf/text/FontCatalog.h"

#include "pdf/log/Log.h"
#include "pdf/text/FontRequest.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fontconfig/fontconfig.h>
#include <utility>

namespace tallyfold::pdf {

namespace {

/// Customary PostScript names and free fonts with the same advance widths.
constexpr std::array<std::pair<const char *, const char *>, 16> metricCompatible{{
    {"Helvetica", "NimbusSans-Regular"},
    {"Helvetica-Bold", "NimbusSans-Bold"},
    {"Helvetica-Oblique", "NimbusSans-Italic"},
    {"Helvetica-BoldOblique", "NimbusSans-BoldItalic"},
    {"ArialMT", "LiberationSans"},
    {"Arial-BoldMT", "LiberationSans-Bold"},
    {"TimesNewRomanPSMT", "LiberationSerif"},
    {"TimesNewRomanPS-BoldMT", "LiberationSerif-Bold"},
    {"Times-Roman", "NimbusRoman-Regular"},
    {"Times-Bold", "NimbusRoman-Bold"},
    {"Times-Italic", "NimbusRoman-Italic"},
    {"Times-BoldItalic", "NimbusRoman-BoldItalic"},
    {"Courier", "NimbusMonoPS-Regular"},
    {"Courier-Bold", "NimbusMonoPS-Bold"},
    {"Courier-Oblique", "NimbusMonoPS-Italic"},
    {"Courier-BoldOblique", "NimbusMonoPS-BoldItalic"},
}};

struct PatternDestroyer {
    void operator()(FcPattern *pattern) const
    {
        FcPatternDestroy(pattern);
    }
};
using Pattern = std::unique_ptr<FcPattern, PatternDestroyer>;

struct FontSetDestroyer {
    void operator()(FcFontSet *set) const
    {
        FcFontSetDestroy(set);
    }
};
using FontSet = std::unique_ptr<FcFontSet, FontSetDestroyer>;

const FcChar8 *fcText(const char *text)
{
    return reinterpret_cast<const FcChar8 *>(text);
}

std::string textOf(FcPattern *pattern, const char *key)
{
    FcChar8 *value = nullptr;
    return FcPatternGetString(pattern, key, 0, &value) == FcResultMatch
               ? std::string(reinterpret_cast<const char *>(value))
               : std::string();
}

int numberOf(FcPattern *pattern, const char *key, int otherwise)
{
    int value = otherwise;
    FcPatternGetInteger(pattern, key, 0, &value);
    return value;
}

bool isSet(FcPattern *pattern, const char *key)
{
    FcBool value = FcFalse;
    FcPatternGetBool(pattern, key, 0, &value);
    return value != FcFalse;
}

/// Formats that can be embedded; Type 1 files cannot be shaped.
bool isUsable(FcPattern *pattern)
{
    const std::string format = textOf(pattern, FC_FONTFORMAT);
    return isSet(pattern, FC_SCALABLE) && (format == "TrueType" || format == "CFF");
}

/// The request to fontconfig for a font whose name is not available or that lacks a character.
Pattern patternFor(const QString &postScriptName, const std::string &language)
{
    Pattern pattern(FcPatternCreate());
    const FontRequest request = FontRequest::of(postScriptName);
    for (const QString &family : request.families) {
        FcPatternAddString(pattern.get(), FC_FAMILY, fcText(family.toUtf8().constData()));
    }
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, request.weight);
    FcPatternAddInteger(pattern.get(), FC_SLANT, request.isItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    // The language "und" keeps fontconfig from adding that of the locale.
    FcPatternAddString(pattern.get(), FC_LANG, fcText(language.c_str()));
    FcPatternAddString(pattern.get(), FC_LANG, fcText("und"));
    return pattern;
}

constexpr const char *latin = "en";

} // namespace

struct FontCatalog::Config {
    FcConfig *config;

    explicit Config(FcConfig *owned) : config(owned) {}
    ~Config()
    {
        FcConfigDestroy(config);
    }
    Config(const Config &) = delete;
    Config &operator=(const Config &) = delete;
};

struct FontCatalog::Candidate {
    std::string file;
    unsigned index = 0;
    std::string family;
    int weight = 0;
    int slant = 0;
    std::shared_ptr<FcCharSet> characters;

    [[nodiscard]] bool hasOneOf(std::span<const std::u32string> spellings) const
    {
        return std::any_of(spellings.begin(), spellings.end(), [this](const std::u32string &spelling) {
            return std::all_of(spelling.begin(), spelling.end(), [this](char32_t character) {
                return FcCharSetHasChar(characters.get(), character) != FcFalse;
            });
        });
    }
};

FontCatalog &FontCatalog::installed()
{
    static FontCatalog catalog;
    return catalog;
}

FontCatalog::FontCatalog() : m_config(std::make_unique<Config>(FcInitLoadConfigAndFonts())) {}

FontCatalog::FontCatalog(std::span<const std::filesystem::path> files)
    : m_config(std::make_unique<Config>(FcConfigCreate()))
{
    for (const std::filesystem::path &file : files) {
        FcConfigAppFontAddFile(m_config->config, fcText(file.c_str()));
    }
}

FontCatalog::~FontCatalog() = default;

FontCatalog::Face FontCatalog::open(const std::string &file, unsigned index)
{
    const auto [place, isNew] = m_faces.try_emplace({file, index});
    if (isNew) {
        place->second = FontFace::load(file, index);
    }
    return place->second;
}

FontCatalog::Face FontCatalog::exactly(const char *postScriptName)
{
    const Pattern pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_POSTSCRIPT_NAME, fcText(postScriptName));
    struct ObjectSetDestroyer {
        void operator()(FcObjectSet *set) const
        {
            FcObjectSetDestroy(set);
        }
    };
    const std::unique_ptr<FcObjectSet, ObjectSetDestroyer> wanted(
        FcObjectSetBuild(FC_FILE, FC_INDEX, FC_FONTFORMAT, FC_SCALABLE, nullptr));
    const FontSet set(FcFontList(m_config->config, pattern.get(), wanted.get()));
    // Files of the same font are sorted: fontconfig lists them in any order.
    std::vector<std::pair<std::string, unsigned>> files;
    for (int place = 0; set && place < set->nfont; ++place) {
        FcPattern *font = set->fonts[place];
        if (isUsable(font)) {
            files.emplace_back(textOf(font, FC_FILE), static_cast<unsigned>(numberOf(font, FC_INDEX, 0)));
        }
    }
    std::sort(files.begin(), files.end());
    for (const auto &[file, index] : files) {
        if (Face face = open(file, index)) {
            return face;
        }
    }
    return nullptr;
}

FontCatalog::Face FontCatalog::find(const QString &postScriptName)
{
    const QByteArray name = postScriptName.toUtf8();
    if (Face face = exactly(name.constData())) {
        return face;
    }
    for (const auto &[customary, compatible] : metricCompatible) {
        if (name == customary) {
            if (Face face = exactly(compatible)) {
                return face;
            }
        }
    }
    for (const Candidate &candidate : candidates(postScriptName, latin)) {
        if (Face face = open(candidate.file, candidate.index)) {
            return face;
        }
    }
    qCInfo(pdfLog) << "no font that can be embedded is installed";
    return nullptr;
}

FontCatalog::Face FontCatalog::named(const QString &postScriptName)
{
    const std::scoped_lock lock(m_mutex);
    const auto [place, isNew] = m_named.try_emplace(postScriptName);
    if (isNew) {
        place->second = find(postScriptName);
    }
    return place->second;
}

const std::vector<FontCatalog::Candidate> &FontCatalog::candidates(const QString &postScriptName,
                                                                   const std::string &language)
{
    const auto [place, isNew] = m_candidates.try_emplace({postScriptName, language});
    if (!isNew) {
        return place->second;
    }
    const Pattern pattern = patternFor(postScriptName, language);
    FcConfigSubstitute(m_config->config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultMatch;
    const FontSet set(FcFontSort(m_config->config, pattern.get(), FcFalse, nullptr, &result));
    for (int index = 0; set && index < set->nfont; ++index) {
        FcPattern *font = set->fonts[index];
        FcCharSet *characters = nullptr;
        // The outlines of a colour font show only part of it, or nothing.
        if (!isUsable(font) || isSet(font, FC_COLOR) ||
            FcPatternGetCharSet(font, FC_CHARSET, 0, &characters) != FcResultMatch) {
            continue;
        }
        place->second.push_back({textOf(font, FC_FILE), static_cast<unsigned>(numberOf(font, FC_INDEX, 0)),
                                 textOf(font, FC_FAMILY), numberOf(font, FC_WEIGHT, FC_WEIGHT_REGULAR),
                                 numberOf(font, FC_SLANT, FC_SLANT_ROMAN),
                                 std::shared_ptr<FcCharSet>(FcCharSetCopy(characters), FcCharSetDestroy)});
    }
    return place->second;
}

FontCatalog::Face FontCatalog::nearest(std::span<const std::u32string> spellings,
                                       const QString &postScriptName, const std::string &language)
{
    const FontRequest request = FontRequest::of(postScriptName);
    const std::vector<Candidate> &all = candidates(postScriptName, language);
    for (const Candidate &first : all) {
        if (!first.hasOneOf(spellings)) {
            continue;
        }
        // fontconfig ranks language and family before weight; another face of the family may be nearer.
        const auto styleDistance = [&](const Candidate &candidate) {
            const bool isItalic = candidate.slant != FC_SLANT_ROMAN;
            return std::abs(candidate.weight - request.weight) + (isItalic == request.isItalic ? 0 : 1000);
        };
        const Candidate *best = &first;
        for (const Candidate &other : all) {
            if (other.family == first.family && styleDistance(other) < styleDistance(*best) &&
                other.hasOneOf(spellings)) {
                best = &other;
            }
        }
        if (Face face = open(best->file, best->index)) {
            return face;
        }
        if (Face face = open(first.file, first.index)) {
            return face;
        }
    }
    return nullptr;
}

FontCatalog::Face FontCatalog::faceCovering(std::span<const std::u32string> spellings,
                                            const QString &postScriptName, const std::string &language)
{
    if (spellings.empty()) {
        return nullptr;
    }
    const std::scoped_lock lock(m_mutex);
    const std::tuple key{spellings.front(), postScriptName, language};
    if (const auto known = m_covering.find(key); known != m_covering.end()) {
        return known->second;
    }
    constexpr std::size_t maxRemembered = 10'000;
    if (m_covering.size() >= maxRemembered) {
        m_covering.clear();
    }
    return m_covering[key] = nearest(spellings, postScriptName, language);
}

FontCatalog::Face FontCatalog::faceWithVisibleNotdef(const QString &postScriptName)
{
    const std::scoped_lock lock(m_mutex);
    const auto [place, isNew] = m_withVisibleNotdef.try_emplace(postScriptName);
    if (isNew) {
        for (const Candidate &candidate : candidates(postScriptName, latin)) {
            const Face face = open(candidate.file, candidate.index);
            if (face && face->hasVisibleNotdef()) {
                place->second = face;
                break;
            }
        }
    }
    return place->second;
}

} // namespace tallyfold::pdf
