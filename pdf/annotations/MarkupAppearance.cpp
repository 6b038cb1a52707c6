#include "pdf/annotations/MarkupAppearance.h"

#include "pdf/annotations/FieldText.h"
#include "pdf/annotations/MarkupForm.h"
#include "pdf/annotations/ShapeMarkup.h"
#include "pdf/annotations/TextMarkup.h"
#include "pdf/source/PageGeometry.h"

#include <algorithm>

namespace tallyfold::pdf {

namespace {

std::optional<GeneratedForm> freeText(QPDFObjectHandle annotation, TextFonts &fonts)
{
    const std::optional<Rect> rect = rectFrom(annotation.getKey("/Rect"));
    const QString text = fieldText(annotation.getKey("/Contents"));
    if (!rect) {
        return std::nullopt;
    }
    const BorderStyle border = borderStyleOf(annotation);
    std::string operators;
    ContentStream content(operators);
    if (const auto background = colorFrom(annotation.getKey("/C"))) {
        content.setColor(Paint::fill, *background).appendRectangle(*rect).fill().endLine();
    }
    QPDFObjectHandle appearance = annotation.getKey("/DA");
    const DefaultAppearance style =
        parseDefaultAppearance(appearance.isString() ? appearance.getStringValue() : std::string());
    if (border.width > 0) {
        const double half = border.width / 2;
        const auto state = content.saveGraphicsState();
        content.setColor(Paint::stroke, DeviceColor::gray(0));
        setLineStyle(content, border);
        content.appendRectangle({rect->minX + half, rect->minY + half, rect->maxX - half, rect->maxY - half})
            .stroke();
    }
    TextBox box{*rect,
                border.width + 2,
                0,
                style.size > 0 ? style.size : 12,
                fontNamed(style.fontName, QPDFObjectHandle::newNull()),
                style.color};
    QPDFObjectHandle quadding = annotation.getKey("/Q");
    box.quadding = quadding.isInteger() ? static_cast<int>(std::clamp(quadding.getIntValue(), 0LL, 2LL)) : 0;
    {
        const auto state = content.saveGraphicsState();
        appendWrappedText(content, text, box, fonts);
    }
    GeneratedForm form = markupForm(annotation, operators, *rect);
    form.usesTextFonts = !text.isEmpty();
    return form;
}

/// A note: a small sheet at the upper left of its rectangle, without its text.
std::optional<GeneratedForm> note(QPDFObjectHandle annotation)
{
    const std::optional<Rect> rect = rectFrom(annotation.getKey("/Rect"));
    if (!rect) {
        return std::nullopt;
    }
    constexpr double width = 18;
    constexpr double height = 20;
    const Rect sheet{rect->minX, rect->maxY - height, rect->minX + width, rect->maxY};
    constexpr DeviceColor paleYellow = DeviceColor::rgb(1, 1, 0.6);
    std::string operators;
    ContentStream content(operators);
    content.setColor(Paint::fill, colorOr(annotation, "/C", paleYellow));
    content.setColor(Paint::stroke, DeviceColor::gray(0.3)).setLineWidth(1);
    content.appendRectangle({sheet.minX + 1, sheet.minY + 1, sheet.maxX - 1, sheet.maxY - 1});
    content.fillAndStroke().endLine();
    for (const double below : {5.0, 9.0, 13.0}) {
        content.beginSubpath({sheet.minX + 4, sheet.maxY - below});
        content.appendLine({sheet.maxX - 4, sheet.maxY - below}).stroke().endLine();
    }
    return markupForm(annotation, operators, sheet);
}

} // namespace

std::optional<GeneratedForm> markupAppearance(QPDFObjectHandle annotation, TextFonts &fonts)
{
    QPDFObjectHandle name = annotation.getKey("/Subtype");
    const std::string subtype = name.isName() ? name.getName() : std::string();
    if (subtype == "/FreeText") {
        return freeText(annotation, fonts);
    }
    if (subtype == "/Text") {
        return note(annotation);
    }
    std::optional<GeneratedForm> form = textMarkup(annotation, subtype);
    return form ? form : shapeMarkup(annotation, subtype);
}

} // namespace tallyfold::pdf
