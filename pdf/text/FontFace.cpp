#include "pdf/text/FontFace.h"

#include "pdf/log/Log.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <harfbuzz/hb-ot.h>
#include <harfbuzz/hb.h>

namespace tallyfold::pdf {

namespace {

template <auto destroy> struct Destroyer {
    template <typename Handle> void operator()(Handle *handle) const
    {
        destroy(handle);
    }
};

using Blob = std::unique_ptr<hb_blob_t, Destroyer<hb_blob_destroy>>;
using Face = std::unique_ptr<hb_face_t, Destroyer<hb_face_destroy>>;
using Font = std::unique_ptr<hb_font_t, Destroyer<hb_font_destroy>>;

Blob table(hb_face_t *face, hb_tag_t tag)
{
    return Blob(hb_face_reference_table(face, tag));
}

bool hasTable(hb_face_t *face, hb_tag_t tag)
{
    return hb_blob_get_length(table(face, tag).get()) > 0;
}

/// The fsType field of the OS/2 table: 2 alone forbids embedding, 0x200 allows bitmaps only.
bool mayBeEmbedded(hb_face_t *face)
{
    const Blob blob = table(face, HB_TAG('O', 'S', '/', '2'));
    unsigned length = 0;
    const char *data = hb_blob_get_data(blob.get(), &length);
    constexpr unsigned licenceOffset = 8;
    if (length < licenceOffset + 2) {
        return true;
    }
    const auto byte = [data](unsigned offset) { return static_cast<unsigned char>(data[offset]); };
    const unsigned licence = (static_cast<unsigned>(byte(licenceOffset)) << 8U) | byte(licenceOffset + 1);
    return (licence & 0xfU) != 2U && (licence & 0x200U) == 0;
}

/// The box that the head table gives, in font units.
FontFace::Box boxOf(hb_face_t *face)
{
    const Blob blob = table(face, HB_TAG('h', 'e', 'a', 'd'));
    unsigned length = 0;
    const char *data = hb_blob_get_data(blob.get(), &length);
    constexpr unsigned boxOffset = 36;
    if (length < boxOffset + 8) {
        return {};
    }
    const auto side = [data](unsigned index) {
        const auto high = static_cast<unsigned char>(data[boxOffset + 2 * index]);
        const auto low = static_cast<unsigned char>(data[boxOffset + 2 * index + 1]);
        return static_cast<double>(static_cast<std::int16_t>((high << 8U) | low));
    };
    return {side(0), side(1), side(2), side(3)};
}

std::string nameOf(hb_face_t *face)
{
    std::array<char, 128> name{};
    unsigned size = name.size();
    hb_ot_name_get_utf8(face, HB_OT_NAME_ID_POSTSCRIPT_NAME, HB_LANGUAGE_INVALID, &size, name.data());
    std::string result(name.data());
    std::erase_if(result, [](char ch) {
        return std::isalnum(static_cast<unsigned char>(ch)) == 0 && ch != '-' && ch != '_';
    });
    return result.empty() ? "Font" : result;
}

} // namespace

struct FontFace::Handles {
    Face face;
    Font font;
    Outlines outlines = Outlines::trueType;
    std::string name;
    double unitsPerEm = 1000;
    double ascent = 0;
    double descent = 0;
    double capHeight = 0;
    Box box;
    double italicAngle = 0;
    bool hasAscii = false;
    bool hasVisibleNotdef = false;
    bool isFixedPitch = false;
};

std::shared_ptr<const FontFace> FontFace::load(const std::filesystem::path &path, unsigned index)
{
    const Blob blob(hb_blob_create_from_file_or_fail(path.c_str()));
    if (!blob) {
        qCInfo(pdfLog) << "a font file cannot be read:" << path.c_str();
        return nullptr;
    }
    auto handles = std::make_unique<Handles>();
    // The upper bits select an instance of a variable font; the default one is embedded.
    handles->face.reset(hb_face_create(blob.get(), index & 0xffffU));
    hb_face_t *face = handles->face.get();
    if (hb_face_get_glyph_count(face) == 0 || !mayBeEmbedded(face)) {
        qCInfo(pdfLog) << "a font has no glyphs or may not be embedded:" << path.c_str();
        return nullptr;
    }
    if (hasTable(face, HB_TAG('g', 'l', 'y', 'f'))) {
        handles->outlines = Outlines::trueType;
    } else if (hasTable(face, HB_TAG('C', 'F', 'F', ' '))) {
        handles->outlines = Outlines::cff;
    } else {
        qCInfo(pdfLog) << "a font has no outlines that can be embedded:" << path.c_str();
        return nullptr;
    }
    hb_face_make_immutable(face);
    handles->font.reset(hb_font_create(face));
    hb_font_make_immutable(handles->font.get());
    handles->unitsPerEm = std::max(1U, hb_face_get_upem(face));
    handles->name = nameOf(face);
    hb_font_extents_t extents{};
    hb_font_get_h_extents(handles->font.get(), &extents);
    handles->ascent = extents.ascender * 1000.0 / handles->unitsPerEm;
    handles->descent = -extents.descender * 1000.0 / handles->unitsPerEm;
    hb_position_t capHeight = 0;
    handles->capHeight =
        hb_ot_metrics_get_position(handles->font.get(), HB_OT_METRICS_TAG_CAP_HEIGHT, &capHeight) != 0
            ? capHeight * 1000.0 / handles->unitsPerEm
            : handles->ascent;
    handles->italicAngle =
        static_cast<double>(hb_style_get_value(handles->font.get(), HB_STYLE_TAG_SLANT_ANGLE));
    const Box units = boxOf(face);
    const double scale = 1000.0 / handles->unitsPerEm;
    handles->box = {units.left * scale, units.bottom * scale, units.right * scale, units.top * scale};
    hb_glyph_extents_t box{};
    handles->hasVisibleNotdef =
        hb_font_get_glyph_extents(handles->font.get(), 0, &box) != 0 && box.width != 0;
    const std::shared_ptr<FontFace> opened(new FontFace(std::move(handles)));
    Handles &known = *opened->m_handles;
    known.hasAscii = true;
    for (char32_t character = U' '; character < U'\x7f'; ++character) {
        known.hasAscii = known.hasAscii && opened->has(character);
    }
    known.isFixedPitch = opened->advanceOf(U'i') == opened->advanceOf(U'W');
    return opened;
}

FontFace::FontFace(std::unique_ptr<Handles> handles) : m_handles(std::move(handles)) {}

FontFace::~FontFace() = default;

hb_face_t *FontFace::face() const
{
    return m_handles->face.get();
}

hb_font_t *FontFace::font() const
{
    return m_handles->font.get();
}

FontFace::Outlines FontFace::outlines() const
{
    return m_handles->outlines;
}

const std::string &FontFace::postScriptName() const
{
    return m_handles->name;
}

double FontFace::ascent() const
{
    return m_handles->ascent;
}

double FontFace::descent() const
{
    return m_handles->descent;
}

double FontFace::capHeight() const
{
    return m_handles->capHeight;
}

const FontFace::Box &FontFace::box() const
{
    return m_handles->box;
}

double FontFace::italicAngle() const
{
    return m_handles->italicAngle;
}

double FontFace::thousandths(double fontUnits) const
{
    return fontUnits * 1000.0 / m_handles->unitsPerEm;
}

double FontFace::advance(std::uint32_t glyph) const
{
    return thousandths(hb_font_get_glyph_h_advance(font(), glyph));
}

double FontFace::advanceOf(char32_t character) const
{
    hb_codepoint_t glyph = 0;
    hb_font_get_nominal_glyph(font(), character, &glyph);
    return advance(glyph);
}

bool FontFace::hasAscii() const
{
    return m_handles->hasAscii;
}

bool FontFace::hasVisibleNotdef() const
{
    return m_handles->hasVisibleNotdef;
}

bool FontFace::isFixedPitch() const
{
    return m_handles->isFixedPitch;
}

bool FontFace::has(char32_t character) const
{
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(font(), character, &glyph) != 0 && glyph != 0;
}

} // namespace tallyfold::pdf
