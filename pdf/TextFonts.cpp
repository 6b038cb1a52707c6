#include "pdf/TextFonts.h"

#include "pdf/CharacterMaps.h"
#include "pdf/FontCatalog.h"
#include "pdf/NumberFormat.h"
#include "pdf/TextItems.h"

#include <QList>

#include <algorithm>
#include <cmath>
#include <harfbuzz/hb.h>
#include <unicode/uchar.h>

namespace tallyfold::pdf {

namespace {

using Face = std::shared_ptr<const FontFace>;

/// Adjustments below this many thousandths cannot be seen.
constexpr double leastAdjustment = 0.05;
constexpr int adjustmentDecimals = 2;

/// Control characters, tabs among them, take a space; there is nothing else a single line could do with them.
QString printable(const QString &text)
{
    QString result = text;
    for (QChar &ch : result) {
        if (ch.category() == QChar::Other_Control) {
            ch = u' ';
        }
    }
    return result;
}

/// The characters of a cluster that must be in a font; those that are never seen need not be.
std::u32string neededCharacters(const QString &text, qsizetype start, qsizetype end)
{
    std::u32string needed;
    for (const char32_t character : text.sliced(start, end - start).toUcs4()) {
        if (u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_DEFAULT_IGNORABLE_CODE_POINT) == 0) {
            needed.push_back(character);
        }
    }
    return needed;
}

bool hasAll(const FontFace &face, const std::u32string &characters)
{
    return std::all_of(characters.begin(), characters.end(), [&](char32_t ch) { return face.has(ch); });
}

/// A stretch of an item that one font has.
struct FontStretch {
    qsizetype start = 0;
    qsizetype end = 0;
    Face face;
};

/// Splits an item by font, never inside a user-perceived character.
std::vector<FontStretch> byFont(const QString &text, const TextItem &item, const Face &base,
                                const QString &name)
{
    std::vector<FontStretch> stretches;
    const std::vector<qsizetype> clusters = clusterBoundaries(text, item.start, item.length);
    for (std::size_t index = 0; index + 1 < clusters.size(); ++index) {
        const std::u32string needed = neededCharacters(text, clusters[index], clusters[index + 1]);
        Face face = base;
        if (!hasAll(*base, needed)) {
            // A space or full stop between words of another font goes with them: fewer seams.
            if (!stretches.empty() && hasAll(*stretches.back().face, needed)) {
                face = stretches.back().face;
            } else if (Face other = FontCatalog::installed().having(needed, name)) {
                face = other;
            } else if (Face partly = FontCatalog::installed().having(needed.substr(0, 1), name)) {
                face = partly;
            }
        }
        if (!stretches.empty() && stretches.back().face == face) {
            stretches.back().end = clusters[index + 1];
        } else {
            stretches.push_back({clusters[index], clusters[index + 1], face});
        }
    }
    if (item.isRightToLeft) {
        std::reverse(stretches.begin(), stretches.end());
    }
    return stretches;
}

bool isPlain(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch >= u' ' && ch < u'\x7f'; });
}

} // namespace

/// A line in the making.
struct TextFonts::Shaping {
    const QString &text;
    ShapedLine &line;
    bool hasSharedGlyphs = false; ///< Whether several glyphs show one stretch of text together.
};

void TextFonts::BufferDestroyer::operator()(hb_buffer_t *buffer) const
{
    hb_buffer_destroy(buffer);
}

TextFonts::TextFonts(OutputObjects &objects) : m_objects(&objects), m_buffer(hb_buffer_create()) {}

TextFonts::~TextFonts() = default;

std::size_t TextFonts::fontFor(const Face &face)
{
    for (std::size_t index = 0; index < m_fonts.size(); ++index) {
        if (&m_fonts[index]->embedded.face() == face.get()) {
            return index;
        }
    }
    m_fonts.push_back(std::make_unique<Font>(Font{EmbeddedFont(face), m_objects->reserve()}));
    return m_fonts.size() - 1;
}

ShapedLine TextFonts::shape(const QString &text, const QString &postScriptName, double size)
{
    ShapedLine line;
    line.size = size;
    const Face base = FontCatalog::installed().named(postScriptName);
    if (!base) {
        return line;
    }
    line.ascent = base->ascent() * size / 1000;
    line.descent = base->descent() * size / 1000;
    const QString shown = printable(text);
    Shaping shaping{shown, line};
    const std::vector<TextItem> items = itemize(shown);
    for (const TextItem &item : items) {
        if (isPlain(shown)) { // Every text font has these.
            appendRun(shaping, item.start, item.length, base, item.isRightToLeft, item.script);
            continue;
        }
        for (const FontStretch &stretch : byFont(shown, item, base, postScriptName)) {
            appendRun(shaping, stretch.start, stretch.end - stretch.start, stretch.face, item.isRightToLeft,
                      item.script);
        }
    }
    // Readers put right-to-left text into its order by themselves, and would turn round what they are told as
    // well.
    const bool isLeftToRight =
        std::none_of(items.begin(), items.end(), [](const TextItem &item) { return item.isRightToLeft; });
    if (shaping.hasSharedGlyphs && isLeftToRight) {
        line.spokenText = shown;
    }
    for (const ShapedRun &run : line.runs) {
        const FontFace &face = m_fonts[run.font]->embedded.face();
        line.ascent = std::max(line.ascent, face.ascent() * size / 1000);
        line.descent = std::max(line.descent, face.descent() * size / 1000);
        for (const ShapedGlyph &glyph : run.glyphs) {
            line.width += glyph.advance * size / 1000;
        }
    }
    return line;
}

void TextFonts::appendRun(Shaping &shaping, qsizetype start, qsizetype length, const Face &face,
                          bool isRightToLeft, std::uint32_t script)
{
    if (length == 0) {
        return;
    }
    const std::size_t fontNumber = fontFor(face);
    EmbeddedFont &font = m_fonts[fontNumber]->embedded;
    hb_buffer_t *buffer = m_buffer.get();
    hb_buffer_clear_contents(buffer);
    hb_buffer_add_utf16(buffer, shaping.text.utf16(), static_cast<int>(shaping.text.size()),
                        static_cast<unsigned>(start), static_cast<int>(length));
    hb_buffer_set_direction(buffer, isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, hb_script_from_iso15924_tag(script));
    hb_buffer_set_language(buffer, hb_language_get_default());
    hb_shape(face->font(), buffer, nullptr, 0);

    unsigned count = 0;
    const hb_glyph_info_t *infos = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t *positions = hb_buffer_get_glyph_positions(buffer, nullptr);
    ShapedRun run{fontNumber, {}};
    run.glyphs.reserve(count);
    for (unsigned index = 0; index < count; ++index) {
        const qsizetype cluster = infos[index].cluster;
        // A cluster ends where the next one in the text begins; its text goes with its first glyph.
        qsizetype end = start + length;
        bool isFirstOfCluster = true;
        if (isRightToLeft) {
            for (unsigned before = index; before > 0; --before) {
                if (infos[before - 1].cluster != infos[index].cluster) {
                    end = infos[before - 1].cluster;
                    break;
                }
            }
            isFirstOfCluster = index + 1 == count || infos[index + 1].cluster != infos[index].cluster;
        } else {
            for (unsigned after = index + 1; after < count; ++after) {
                if (infos[after].cluster != infos[index].cluster) {
                    end = infos[after].cluster;
                    break;
                }
            }
            isFirstOfCluster = index == 0 || infos[index - 1].cluster != infos[index].cluster;
        }
        shaping.hasSharedGlyphs = shaping.hasSharedGlyphs || !isFirstOfCluster;
        const QString glyphText = isFirstOfCluster ? shaping.text.sliced(cluster, end - cluster) : QString();
        const std::uint32_t glyph = infos[index].codepoint;
        run.glyphs.push_back({font.codeFor(glyph, glyphText), face->advance(glyph),
                              face->thousandths(positions[index].x_advance),
                              face->thousandths(positions[index].x_offset),
                              face->thousandths(positions[index].y_offset)});
    }
    shaping.line.runs.push_back(std::move(run));
}

void TextFonts::show(const ShapedLine &line, double x, double baseline, std::string &content)
{
    if (!line.spokenText.isEmpty()) {
        content.append("/Span<</ActualText<FEFF");
        for (const QChar unit : line.spokenText) {
            appendHex(content, unit.unicode());
        }
        content.append(">>>BDC\n");
    }
    content.append("BT ");
    appendNumber(content, x);
    content.push_back(' ');
    appendNumber(content, baseline);
    content.append(" Td\n");
    double rise = 0;
    for (const ShapedRun &run : line.runs) {
        content.append("/T");
        appendInteger(content, static_cast<std::int64_t>(run.font));
        content.push_back(' ');
        appendNumber(content, line.size);
        content.append(" Tf");
        double pending = 0; // Thousandths to move right before the next glyph.
        bool isOpen = false;
        const auto close = [&] {
            if (isOpen) {
                content.append(">]TJ\n");
                isOpen = false;
            }
        };
        for (const ShapedGlyph &glyph : run.glyphs) {
            if (std::abs(glyph.yOffset - rise) > leastAdjustment) {
                close();
                rise = glyph.yOffset;
                content.push_back(' ');
                appendNumber(content, rise * line.size / 1000);
                content.append(" Ts");
            }
            pending += glyph.xOffset;
            if (!isOpen) {
                content.append("[<");
                isOpen = true;
            }
            if (std::abs(pending) > leastAdjustment) {
                content.push_back('>');
                appendNumber(content, -pending, adjustmentDecimals);
                content.push_back('<');
                pending = 0;
            }
            appendHex(content, glyph.code);
            pending += glyph.advance - glyph.nominalAdvance - glyph.xOffset;
        }
        if (isOpen && std::abs(pending) > leastAdjustment) {
            content.push_back('>');
            appendNumber(content, -pending, adjustmentDecimals);
            content.push_back('<');
        }
        close();
    }
    content.append(rise == 0 ? "ET\n" : "0 Ts ET\n");
    if (!line.spokenText.isEmpty()) {
        content.append("EMC\n");
    }
}

int TextFonts::resources()
{
    if (m_resources == 0) {
        m_resources = m_objects->reserve();
    }
    return m_resources;
}

bool TextFonts::isUsed() const
{
    return !m_fonts.empty();
}

void TextFonts::finish()
{
    if (m_resources == 0) {
        return;
    }
    std::string names = "<<";
    for (std::size_t index = 0; index < m_fonts.size(); ++index) {
        m_fonts[index]->embedded.write(*m_objects, m_fonts[index]->number);
        names.append("/T");
        appendInteger(names, static_cast<std::int64_t>(index));
        names.push_back(' ');
        appendInteger(names, m_fonts[index]->number);
        names.append(" 0 R");
    }
    m_objects->writeObject(m_resources, names + ">>");
}

} // namespace tallyfold::pdf
