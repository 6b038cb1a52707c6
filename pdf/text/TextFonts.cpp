#include "pdf/text/TextFonts.h"

#include "pdf/text/ActualText.h"
#include "pdf/text/TextOperators.h"

#include <algorithm>

namespace tallyfold::pdf {

namespace {

bool isControl(QChar ch)
{
    return ch.category() == QChar::Other_Control || ch == QChar::LineSeparator ||
           ch == QChar::ParagraphSeparator;
}

/// `text` without control characters.
QString onOneLine(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), isControl)) {
        return text;
    }
    QString line;
    for (const QChar ch : text) {
        if (!isControl(ch)) {
            line.append(ch);
        } else if (ch.isSpace()) {
            line.append(u' ');
        }
    }
    return line;
}

} // namespace

TextFonts::TextFonts(OutputObjects &objects, FontCatalog &catalog)
    : m_objects(&objects), m_catalog(&catalog), m_shaper(catalog)
{
}

TextFonts::~TextFonts() = default;

const TextFonts::Face &TextFonts::faceNamed(const QString &postScriptName)
{
    if (!m_lastFace || m_lastName != postScriptName) {
        m_lastName = postScriptName;
        m_lastFace = m_catalog->named(postScriptName);
    }
    return m_lastFace;
}

std::uint16_t TextFonts::numberOf(const Face &face)
{
    const auto known = std::find_if(m_fonts.begin(), m_fonts.end(),
                                    [&](const EmbeddedFont &font) { return &font.face() == face.get(); });
    const auto number = static_cast<std::uint16_t>(known - m_fonts.begin());
    if (known == m_fonts.end()) {
        m_fonts.emplace_back(face);
    }
    return number;
}

ShapedLine TextFonts::shape(const QString &text, const QString &postScriptName, double size)
{
    ShapedLine line;
    line.size = size;
    const Face base = faceNamed(postScriptName);
    if (!base) {
        return line;
    }
    const QString shown = onOneLine(text);
    const std::vector<GlyphRun> runs = m_shaper.shape(shown, base, postScriptName);
    double width = 0;
    double ascent = runs.empty() ? base->ascent() : runs.front().face->ascent();
    double descent = runs.empty() ? base->descent() : runs.front().face->descent();
    for (const GlyphRun &run : runs) {
        ascent = std::max(ascent, run.face->ascent());
        descent = std::max(descent, run.face->descent());
        const std::uint16_t number = numberOf(run.face);
        EmbeddedFont &font = m_fonts[number];
        for (const PlacedGlyph &glyph : run.glyphs) {
            width += glyph.advance;
            line.glyphs.push_back(
                {number, font.placeOf(glyph.glyph, glyph.text), glyph.advance, glyph.xOffset, glyph.yOffset});
        }
    }
    line.width = width * size / 1000;
    line.ascent = ascent * size / 1000;
    line.descent = descent * size / 1000;
    line.actualTexts = actualTexts(runs);
    return line;
}

void TextFonts::show(const ShapedLine &line, double x, double baseline, ContentStream &content) const
{
    appendTextObject(line, {x, baseline}, content);
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
    std::string syntax;
    {
        DictionaryWriter resources(syntax);
        for (std::size_t index = 0; index < m_fonts.size(); ++index) {
            m_fonts[index].write(*m_objects, index, resources);
        }
    }
    m_objects->writeObject(m_resources, syntax);
}

} // namespace tallyfold::pdf
