#include "core/StampDrawing.h"

#include "core/StampLayout.h"
#include "pdf/syntax/NumberFormat.h"

#include <algorithm>

namespace tallyfold {

namespace {

/// Space between stacked lines, in font sizes.
constexpr double lineGap = 0.25;

constexpr int coordinateDecimals = 4;

/// Two, for some readers pass over a single space.
constexpr auto spaces = "  ";
constexpr double belowAnyPage = -32000;
constexpr double nextBreak = 9; // Points further down.

void appendNumbers(std::string &out, std::initializer_list<double> numbers)
{
    for (const double number : numbers) {
        pdf::appendNumber(out, number, coordinateDecimals);
        out.push_back(' ');
    }
}

double componentInRange(double value)
{
    return std::clamp(value, 0.0, 1.0); // A stored colour is read as it is; NaN is not valid in its record.
}

} // namespace

StampDrawing::StampDrawing(const StampSettings &settings, pdf::CopyWriter &copy)
    : m_settings(&settings), m_copy(&copy)
{
    const StampColor &color = settings.color;
    appendNumbers(m_ink,
                  {componentInRange(color.red), componentInRange(color.green), componentInRange(color.blue)});
    m_ink.append("rg\n");
    if (color.alpha < 1) {
        m_ink.append(copy.overlayState(componentInRange(color.alpha))).append(" gs\n");
    }
}

std::string_view StampDrawing::lineBreak()
{
    if (m_break.empty()) {
        pdf::ShapedLine white = m_copy->fonts().shape(QString::fromLatin1(spaces), m_settings->fontName, 1);
        white.spoken.clear(); // The empty text aside stands for them.
        std::string content = "/Span<</ActualText()>>BDC\n";
        m_copy->fonts().show(white, 0, belowAnyPage, content);
        content.append("EMC\n");
        m_break = m_copy->overlayForm({0, belowAnyPage - 1, white.width + 1, belowAnyPage + 1}, content);
    }
    return m_break;
}

void StampDrawing::appendBreak(double down, std::string &content)
{
    const std::string_view form = lineBreak();
    if (down == 0) {
        content.append(form).append(" Do\n");
        return;
    }
    content.append("q ");
    appendNumbers(content, {1, 0, 0, 1, 0, -down});
    content.append("cm ").append(form).append(" Do Q\n");
}

std::string StampDrawing::content(std::span<const Stamper::Line> lines, const pdf::Size &page)
{
    std::string content;
    if (lines.empty()) {
        return content;
    }
    std::vector<pdf::ShapedLine> shaped;
    std::vector<MeasuredLine> measured;
    for (const Stamper::Line &line : lines) {
        shaped.push_back(m_copy->fonts().shape(line.text, m_settings->fontName, m_settings->fontSize));
        const pdf::ShapedLine &last = shaped.back();
        measured.push_back({line.position, last.width, last.ascent, last.descent});
    }
    double down = 0; // Of the next break; some readers pass over what stands twice at one place.
    for (const PlacedLine &line :
         layOut(measured, page, m_settings->margin, m_settings->fontSize * lineGap)) {
        appendBreak(down, content);
        down += nextBreak;
        content.append("q ");
        if (m_settings->background) {
            content.append("1 g ");
            appendNumbers(content, {line.box.minX, line.box.minY, line.box.width(), line.box.height()});
            content.append("re f\n");
        }
        content.append(m_ink);
        m_copy->fonts().show(shaped[line.index], line.x, line.baseline, content);
        content.append("Q\n");
    }
    return content;
}

} // namespace tallyfold
