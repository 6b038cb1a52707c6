#include "pdf/text/TextOperators.h"

#include "pdf/syntax/NumberFormat.h"
#include "pdf/text/CharacterMaps.h"

#include <cmath>

namespace tallyfold::pdf {

namespace {

/// Adjustments below this many thousandths cannot be seen.
constexpr double leastAdjustment = 0.05;
constexpr int adjustmentDecimals = 2;

/// Writes the operators of one text object, keeping account of the text state they leave.
class TextObject {
public:
    TextObject(double size, std::string &content) : m_size(size), m_content(&content) {}

    void begin(double x, double baseline)
    {
        m_content->append("BT ");
        appendNumber(*m_content, x);
        m_content->push_back(' ');
        appendNumber(*m_content, baseline);
        m_content->append(" Td\n");
    }

    void show(const ShapedGlyph &glyph)
    {
        selectFont(glyph.font, glyph.place.layer);
        rise(glyph.yOffset);
        m_pending += glyph.xOffset;
        open();
        if (std::abs(m_pending) > leastAdjustment) {
            m_content->push_back('>');
            appendNumber(*m_content, -m_pending, adjustmentDecimals);
            m_content->push_back('<');
            m_pending = 0;
        }
        appendHex(*m_content, glyph.place.code);
        m_pending += glyph.advance - glyph.place.advance - glyph.xOffset;
    }

    void beginSpoken(const std::u16string &text)
    {
        close();
        m_content->append("/Span<</ActualText<FEFF");
        for (const char16_t unit : text) {
            appendHex(*m_content, unit);
        }
        m_content->append(">>>BDC\n");
    }

    void endSpoken()
    {
        close();
        m_content->append("EMC\n");
    }

    void end()
    {
        close();
        rise(0);
        m_content->append("ET\n");
    }

private:
    void open()
    {
        if (!m_isOpen) {
            m_content->append("[<");
            m_isOpen = true;
        }
    }

    void close()
    {
        if (m_isOpen) {
            m_content->append(">]TJ\n");
            m_isOpen = false;
        }
    }

    void selectFont(std::size_t font, std::size_t layer)
    {
        if (m_hasFont && font == m_font && layer == m_layer) {
            return;
        }
        close();
        m_content->push_back('/');
        m_content->append(fontResourceName(font, layer)).push_back(' ');
        appendNumber(*m_content, m_size);
        m_content->append(" Tf\n");
        m_font = font;
        m_layer = layer;
        m_hasFont = true;
    }

    void rise(double thousandths)
    {
        if (std::abs(thousandths - m_rise) <= leastAdjustment) {
            return;
        }
        close();
        appendNumber(*m_content, thousandths * m_size / 1000);
        m_content->append(" Ts\n");
        m_rise = thousandths;
    }

    double m_size;
    std::string *m_content;
    std::size_t m_font = 0;
    std::size_t m_layer = 0;
    bool m_hasFont = false;
    bool m_isOpen = false; ///< Whether the array of a TJ operator is open.
    double m_rise = 0;     ///< In thousandths of the size.
    double m_pending = 0;  ///< Thousandths of the size to move right before the next glyph.
};

} // namespace

std::string fontResourceName(std::size_t font, std::size_t layer)
{
    std::string name = "T";
    appendInteger(name, static_cast<std::int64_t>(font));
    if (layer > 0) {
        name.push_back('L');
        appendInteger(name, static_cast<std::int64_t>(layer));
    }
    return name;
}

void appendTextObject(const ShapedLine &line, double x, double baseline, std::string &content)
{
    if (line.glyphs.empty()) {
        return;
    }
    TextObject object(line.size, content);
    object.begin(x, baseline);
    auto spoken = line.spoken.begin();
    for (std::size_t index = 0; index < line.glyphs.size(); ++index) {
        if (spoken != line.spoken.end() && spoken->first == index) {
            object.beginSpoken(spoken->text);
        }
        object.show(line.glyphs[index]);
        if (spoken != line.spoken.end() && spoken->end == index + 1) {
            object.endSpoken();
            ++spoken;
        }
    }
    object.end();
}

} // namespace tallyfold::pdf
