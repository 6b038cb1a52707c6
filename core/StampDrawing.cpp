#include "core/StampDrawing.h"

#include "core/StampLayout.h"
#include <algorithm>

namespace tallyfold {

namespace {

/// Space between stacked lines, in font sizes.
constexpr double lineGap = 0.25;

/// Two spaces: some readers ignore a single one.
constexpr auto spaces = "  ";
constexpr double belowAnyPage = -32000;
constexpr double nextBreak = 9; // Points between consecutive breaks.

double componentInRange(double value)
{
    return std::clamp(value, 0.0,
                      1.0); // Stored colours are not clamped, but never NaN, which JSON cannot represent.
}

} // namespace

StampDrawing::StampDrawing(const NormalizedSettings &settings, pdf::CopyWriter &copy)
    : m_settings(&*settings), m_copy(&copy)
{
    const StampColor &color = settings->color;
    const auto rgb = pdf::DeviceColor::rgb(componentInRange(color.red), componentInRange(color.green),
                                           componentInRange(color.blue));
    pdf::ContentStream ink(m_ink);
    ink.setColor(pdf::Paint::fill, rgb).endLine();
    if (color.alpha < 1) {
        ink.setGraphicsState(copy.overlayState(componentInRange(color.alpha))).endLine();
    }
}

std::string_view StampDrawing::lineBreak()
{
    if (m_break.empty()) {
        pdf::ShapedLine white = m_copy->fonts().shape(QString::fromLatin1(spaces), m_settings->fontName, 1);
        white.actualTexts.clear(); // The empty actual text of the form replaces them.
        std::string operators;
        pdf::ContentStream content(operators);
        {
            const auto empty = content.beginActualText({});
            m_copy->fonts().show(white, 0, belowAnyPage, content);
        }
        m_break = m_copy->overlayForm({0, belowAnyPage - 1, white.width + 1, belowAnyPage + 1}, operators);
    }
    return m_break;
}

void StampDrawing::appendBreak(double down, pdf::ContentStream &content)
{
    const std::string_view form = lineBreak();
    if (down == 0) {
        content.invokeXObject(form).endLine();
        return;
    }
    const auto state = content.saveGraphicsState();
    content.concatenateMatrix({1, 0, 0, 1, 0, -down}).invokeXObject(form);
}

std::string StampDrawing::content(std::span<const Stamper::Line> lines, const pdf::Size &page)
{
    std::string operators;
    if (lines.empty()) {
        return operators;
    }
    pdf::ContentStream content(operators);
    std::vector<pdf::ShapedLine> shaped;
    std::vector<MeasuredLine> measured;
    for (const Stamper::Line &line : lines) {
        shaped.push_back(m_copy->fonts().shape(line.text, m_settings->fontName, m_settings->fontSize));
        const pdf::ShapedLine &last = shaped.back();
        measured.push_back({line.position, last.width, last.ascent, last.descent});
    }
    double down = 0; // Of the next break: some readers ignore text repeated at the same position.
    for (const PlacedLine &line :
         layOut(measured, page, m_settings->margin, m_settings->fontSize * lineGap)) {
        appendBreak(down, content);
        down += nextBreak;
        const auto state = content.saveGraphicsState();
        if (m_settings->background) {
            content.setColor(pdf::Paint::fill, pdf::DeviceColor::gray(1));
            content.appendRectangle(line.box).fill().endLine();
        }
        content.append(m_ink);
        m_copy->fonts().show(shaped[line.index], line.x, line.baseline, content);
    }
    return operators;
}

} // namespace tallyfold
