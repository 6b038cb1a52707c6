#include "pdf/annotations/MarkupAppearance.h"

#include "pdf/annotations/FieldText.h"
#include "pdf/annotations/MarkupForm.h"
#include "pdf/annotations/ShapeMarkup.h"
#include "pdf/annotations/Shapes.h"
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
    const std::string fill = colorOperators(annotation.getKey("/C"), Paint::fill);
    std::string content = fill;
    if (!fill.empty()) {
        appendRectangle(content, *rect);
        content.append("f\n");
    }
    QPDFObjectHandle appearance = annotation.getKey("/DA");
    const DefaultAppearance style =
        parseDefaultAppearance(appearance.isString() ? appearance.getStringValue() : std::string());
    if (border.width > 0) {
        const double half = border.width / 2;
        content.append("q 0 G ").append(lineOperators(border));
        appendRectangle(content,
                        {rect->minX + half, rect->minY + half, rect->maxX - half, rect->maxY - half});
        content.append("S Q\n");
    }
    TextBox box{*rect,
                border.width + 2,
                0,
                style.size > 0 ? style.size : 12,
                fontNamed(style.fontName, QPDFObjectHandle::newNull()),
                style.color};
    QPDFObjectHandle quadding = annotation.getKey("/Q");
    box.quadding = quadding.isInteger() ? static_cast<int>(std::clamp(quadding.getIntValue(), 0LL, 2LL)) : 0;
    content.append("q ");
    appendWrappedText(content, text, box, fonts);
    content.append("Q\n");
    GeneratedForm form = markupForm(annotation, content, *rect);
    form.usesTextFonts = !text.isEmpty();
    return form;
}

/// A note is a small sheet at the upper left of its rectangle; what it says is not on the page.
std::optional<GeneratedForm> note(QPDFObjectHandle annotation)
{
    const std::optional<Rect> rect = rectFrom(annotation.getKey("/Rect"));
    if (!rect) {
        return std::nullopt;
    }
    constexpr double width = 18;
    constexpr double height = 20;
    const Rect sheet{rect->minX, rect->maxY - height, rect->minX + width, rect->maxY};
    std::string content = colorOr(annotation, "/C", Paint::fill, "1 1 0.6 rg ") + "0.3 G 1 w ";
    appendRectangle(content, {sheet.minX + 1, sheet.minY + 1, sheet.maxX - 1, sheet.maxY - 1});
    content.append("B\n");
    for (const double below : {5.0, 9.0, 13.0}) {
        appendMoveTo(content, sheet.minX + 4, sheet.maxY - below);
        appendLineTo(content, sheet.maxX - 4, sheet.maxY - below);
        content.append("S\n");
    }
    return markupForm(annotation, content, sheet);
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
