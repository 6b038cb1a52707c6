#include "reader/PageText.h"

#include <algorithm>

namespace tallyfold::reader {

using namespace pdf;

namespace {

/// The widest gap within a word, in line heights. Poppler's own is 0.1.
constexpr double joiningGap = 0.1;

/// Maps page coordinates to those of Poppler's boxes: the crop box as displayed, upright, origin at its top
/// left corner, y downward.
Matrix displayMatrix(const poppler::rectf &crop, poppler::page::orientation_enum orientation)
{
    switch (orientation) {
    case poppler::page::landscape:
        return {0, 1, 1, 0, -crop.top(), -crop.left()};
    case poppler::page::upside_down:
        return {-1, 0, 0, 1, crop.right(), -crop.top()};
    case poppler::page::seascape:
        return {0, -1, -1, 0, crop.bottom(), crop.right()};
    case poppler::page::portrait:
        break;
    }
    return {1, 0, 0, -1, -crop.left(), crop.bottom()};
}

/// Whether the middle of a glyph's box is in `area`. The box spans the ascent and descent of the font, often
/// far more than the ink: the box of a number close to the edge of the page may reach beyond it.
bool holds(const Rect &area, const poppler::rectf &glyph)
{
    const double x = glyph.left() + glyph.width() / 2;
    const double y = glyph.top() + glyph.height() / 2;
    return x >= area.minX && x <= area.maxX && y >= area.minY && y <= area.maxY;
}

/// Whether any glyph of `word` may be in `area`: much faster than its text, which is rarely needed.
bool touches(const Rect &area, const poppler::rectf &word)
{
    return word.left() <= area.maxX && word.right() >= area.minX && word.top() <= area.maxY &&
           word.bottom() >= area.minY;
}

/// The glyphs of `word` that are in `area`.
QString glyphsIn(const Rect &area, const poppler::text_box &word)
{
    const poppler::ustring text = word.text();
    QString inside;
    std::size_t glyph = 0;
    for (std::size_t index = 0; index < text.size(); ++glyph) {
        const std::size_t units = QChar::isHighSurrogate(text[index]) && index + 1 < text.size() ? 2 : 1;
        if (text[index] == QChar::ByteOrderMark) { // Added by Poppler's conversion; not a glyph.
            ++index;
            --glyph;
            continue;
        }
        if (holds(area, word.char_bbox(glyph))) {
            for (std::size_t unit = 0; unit < units; ++unit) {
                inside += QChar(text[index + unit]);
            }
        }
        index += units;
    }
    return inside;
}

/// The separator of two consecutive words. Words without a space between them may still be one, as when the
/// font changes within a number.
QString separator(const poppler::text_box &word, const poppler::text_box &next)
{
    const poppler::rectf first = word.bbox();
    const poppler::rectf second = next.bbox();
    const double gapX = std::max(first.left(), second.left()) - std::min(first.right(), second.right());
    const double gapY = std::max(first.top(), second.top()) - std::min(first.bottom(), second.bottom());
    const bool runsAcross = word.rotation() % 2 == 0;
    const double thickness =
        runsAcross ? std::min(first.height(), second.height()) : std::min(first.width(), second.width());
    const bool shareLine = word.rotation() == next.rotation() && (runsAcross ? gapY : gapX) < -thickness / 2;
    if (!shareLine) {
        return QStringLiteral("\n");
    }
    const double gap = runsAcross ? gapX : gapY;
    return gap < thickness * joiningGap ? QString() : QStringLiteral(" ");
}

Matrix toDisplayOf(const poppler::page &page)
{
    return displayMatrix(page.page_rect(poppler::crop_box), page.orientation());
}

} // namespace

QString quickTextIn(const poppler::page &page, const Rect &area)
{
    const Rect shown = boundsOfTransformed(toDisplayOf(page), area);
    if (!(shown.minX < shown.maxX && shown.minY < shown.maxY)) {
        return {}; // Poppler takes an empty rectangle for the whole page.
    }
    const poppler::rectf rect(shown.minX, shown.minY, shown.maxX - shown.minX, shown.maxY - shown.minY);
    // A form feed ends it.
    const poppler::byte_array text = page.text(rect, poppler::page::raw_order_layout).to_utf8();
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).trimmed();
}

PageText::PageText(const poppler::page &page) : m_toDisplay(toDisplayOf(page)), m_words(page.text_list()) {}

std::vector<QString> PageText::in(std::span<const Rect> areas) const
{
    std::vector<QString> texts;
    texts.reserve(areas.size());
    for (const Rect &area : areas) {
        texts.push_back(inDisplayed(boundsOfTransformed(m_toDisplay, area)));
    }
    return texts;
}

QString PageText::inDisplayed(const Rect &area) const
{
    QString text;
    const poppler::text_box *last = nullptr;
    for (const poppler::text_box &word : m_words) {
        const QString inside = touches(area, word.bbox()) ? glyphsIn(area, word) : QString();
        if (inside.isEmpty()) {
            continue;
        }
        if (last != nullptr) {
            const bool hasSpace = last + 1 == &word && last->has_space_after();
            text += hasSpace ? QStringLiteral(" ") : separator(*last, word);
        }
        text += inside;
        last = &word;
    }
    return text;
}

} // namespace tallyfold::reader
