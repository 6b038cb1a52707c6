#include "pdf/FontCatalog.h"

#include <algorithm>
#include <array>
#include <fontconfig/fontconfig.h>
#include <utility>

namespace tallyfold::pdf {

namespace {

/// Customary PostScript names and the free fonts that have the same advance widths.
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

unsigned indexOf(FcPattern *pattern)
{
    int index = 0;
    FcPatternGetInteger(pattern, FC_INDEX, 0, &index);
    return static_cast<unsigned>(index);
}

/// Formats that can be embedded as they are; Type 1 files cannot be shaped.
bool isUsable(FcPattern *pattern)
{
    const std::string format = textOf(pattern, FC_FONTFORMAT);
    FcBool isScalable = FcFalse;
    FcPatternGetBool(pattern, FC_SCALABLE, 0, &isScalable);
    return isScalable != FcFalse && (format == "TrueType" || format == "CFF");
}

/// What the catalogue asks the platform for when it knows no font of the name: "Foo-BoldItalic" is a bold
/// italic Foo.
Pattern request(const QString &postScriptName)
{
    Pattern pattern(FcPatternCreate());
    const QString family = postScriptName.section(u'-', 0, 0);
    FcPatternAddString(pattern.get(), FC_POSTSCRIPT_NAME, fcText(postScriptName.toUtf8().constData()));
    FcPatternAddString(pattern.get(), FC_FAMILY, fcText(family.toUtf8().constData()));
    if (postScriptName.contains(QStringLiteral("Bold"), Qt::CaseInsensitive)) {
        FcPatternAddInteger(pattern.get(), FC_WEIGHT, FC_WEIGHT_BOLD);
    }
    if (postScriptName.contains(QStringLiteral("Italic"), Qt::CaseInsensitive) ||
        postScriptName.contains(QStringLiteral("Oblique"), Qt::CaseInsensitive)) {
        FcPatternAddInteger(pattern.get(), FC_SLANT, FC_SLANT_ITALIC);
    }
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    return pattern;
}

} // namespace

struct FontCatalog::Config {
    FcConfig *config = FcInitLoadConfigAndFonts();

    Config() = default;
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
    std::shared_ptr<FcCharSet> characters;
};

FontCatalog &FontCatalog::installed()
{
    static FontCatalog catalog;
    return catalog;
}

FontCatalog::FontCatalog() : m_config(std::make_unique<Config>()) {}

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
    // Two files of the same font come in no particular order; the name of the file decides.
    std::vector<std::pair<std::string, unsigned>> files;
    for (int place = 0; set && place < set->nfont; ++place) {
        FcPattern *font = set->fonts[place];
        if (isUsable(font)) {
            files.emplace_back(textOf(font, FC_FILE), indexOf(font));
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
    for (const Candidate &candidate : candidates(postScriptName)) {
        if (Face face = open(candidate.file, candidate.index)) {
            return face;
        }
    }
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

const std::vector<FontCatalog::Candidate> &FontCatalog::candidates(const QString &postScriptName)
{
    const auto [place, isNew] = m_candidates.try_emplace(postScriptName);
    if (!isNew) {
        return place->second;
    }
    const Pattern pattern = request(postScriptName);
    FcConfigSubstitute(m_config->config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultMatch;
    const FontSet set(FcFontSort(m_config->config, pattern.get(), FcFalse, nullptr, &result));
    for (int index = 0; set && index < set->nfont; ++index) {
        FcPattern *font = set->fonts[index];
        FcCharSet *characters = nullptr;
        if (!isUsable(font) || FcPatternGetCharSet(font, FC_CHARSET, 0, &characters) != FcResultMatch) {
            continue;
        }
        place->second.push_back({textOf(font, FC_FILE), indexOf(font),
                                 std::shared_ptr<FcCharSet>(FcCharSetCopy(characters), FcCharSetDestroy)});
    }
    return place->second;
}

FontCatalog::Face FontCatalog::having(const std::u32string &characters, const QString &postScriptName)
{
    const std::scoped_lock lock(m_mutex);
    const auto known = m_having.find({characters, postScriptName});
    if (known != m_having.end()) {
        return known->second;
    }
    constexpr std::size_t mostRemembered = 10'000;
    if (m_having.size() >= mostRemembered) {
        m_having.clear();
    }
    Face &found = m_having[{characters, postScriptName}];
    for (const Candidate &candidate : candidates(postScriptName)) {
        const bool hasAll = std::all_of(characters.begin(), characters.end(), [&](char32_t character) {
            return FcCharSetHasChar(candidate.characters.get(), character) != FcFalse;
        });
        if (hasAll) {
            found = open(candidate.file, candidate.index);
            if (found) {
                break;
            }
        }
    }
    return found;
}

} // namespace tallyfold::pdf
