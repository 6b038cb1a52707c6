#include "pdf/text/TextOperators.h"

#include "pdf/syntax/NumberFormat.h"

#include <cmath>
#include <optional>
#include <span>

namespace tallyfold::pdf {

namespace {

/// Smaller adjustments, in thousandths of the font size, are invisible.
constexpr double leastAdjustment = 0.05;

/// Writes one text object and keeps track of the text state.
class TextObject {
public:
    TextObject(double size, ContentStream &content, Point start)
        : m_size(size), m_content(&content), m_object(content.beginText())
    {
        m_content->moveTextPosition(start).endLine();
    }

    ~TextObject()
    {
        m_shown.reset();
        rise(0);
    }

    TextObject(const TextObject &) = delete;
    TextObject &operator=(const TextObject &) = delete;

    void show(const ShapedGlyph &glyph)
    {
        selectFont(glyph.font, glyph.place.layer);
        rise(glyph.yOffset);
        m_pending += glyph.xOffset;
        if (!m_shown) {
            m_shown.emplace(*m_content);
        }
        if (std::abs(m_pending) > leastAdjustment) {
            m_shown->adjust(-m_pending);
            m_pending = 0;
        }
        m_shown->show(glyph.place.code);
        m_pending += glyph.advance - glyph.place.advance - glyph.xOffset;
    }

    /// Shows `glyphs` with `text` as their actual text.
    void showAs(const std::u16string &text, std::span<const ShapedGlyph> glyphs)
    {
        m_shown.reset();
        const auto span = m_content->beginActualText(text);
        for (const ShapedGlyph &glyph : glyphs) {
            show(glyph);
        }
        m_shown.reset();
    }

private:
    void selectFont(std::size_t font, std::size_t layer)
    {
        if (m_hasFont && font == m_font && layer == m_layer) {
            return;
        }
        m_shown.reset();
        m_content->setFont(fontResourceName(font, layer), m_size).endLine();
        m_font = font;
        m_layer = layer;
        m_hasFont = true;
    }

    void rise(double thousandths)
    {
        if (std::abs(thousandths - m_rise) <= leastAdjustment) {
            return;
        }
        m_shown.reset();
        m_content->setTextRise(thousandths * m_size / 1000).endLine();
        m_rise = thousandths;
    }

    double m_size;
    ContentStream *m_content;
    ContentStream::Scope m_object;
    std::optional<PositionedText> m_shown; ///< The operand of TJ that is open.
    std::size_t m_font = 0;
    std::size_t m_layer = 0;
    bool m_hasFont = false;
    double m_rise = 0;    ///< In thousandths of the size.
    double m_pending = 0; ///< Thousandths of the size to move right before the next glyph.
};

} // namespace

std::string fontResourceName(std::size_t font, std::size_t layer)
{
    std::string name = "/T";
    appendInteger(name, static_cast<std::int64_t>(font));
    if (layer > 0) {
        name.push_back('L');
        appendInteger(name, static_cast<std::int64_t>(layer));
    }
    return name;
}

void appendTextObject(const ShapedLine &line, Point start, ContentStream &content)
{
    if (line.glyphs.empty()) {
        return;
    }
    TextObject object(line.size, content, start);
    const std::span<const ShapedGlyph> glyphs(line.glyphs);
    std::size_t next = 0;
    const auto showUpTo = [&](std::size_t end) {
        for (; next < end; ++next) {
            object.show(glyphs[next]);
        }
    };
    for (const ActualText &part : line.actualTexts) {
        showUpTo(part.first);
        object.showAs(part.text, glyphs.subspan(part.first, part.end - part.first));
        next = part.end;
    }
    showUpTo(glyphs.size());
}

} // namespace tallyfold::pdf
