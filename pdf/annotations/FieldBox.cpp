#include "pdf/annotations/FieldBox.h"

#include "pdf/annotations/Shapes.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tallyfold::pdf {

namespace {

using Kind = BorderStyle::Kind;

/// The rotation of a widget's contents, counterclockwise: 0, 90, 180 or 270 degrees.
int turnFrom(QPDFObjectHandle value)
{
    if (!value.isInteger() || value.getIntValue() % 90 != 0) {
        return 0;
    }
    return static_cast<int>((value.getIntValue() % 360 + 360) % 360);
}

Matrix matrixOf(int turn, Size size)
{
    switch (turn) {
    case 90:
        return {0, 1, -1, 0, size.height, 0};
    case 180:
        return {-1, 0, 0, -1, size.width, size.height};
    case 270:
        return {0, -1, 1, 0, 0, size.width};
    default:
        return {};
    }
}

bool isThick(const BorderStyle &border)
{
    return border.kind == Kind::beveled || border.kind == Kind::inset;
}

/// The light and dark edges of a beveled or inset border.
void appendEdges(ContentStream &content, Size size, const BorderStyle &border)
{
    const double outer = border.width;
    const double inner = 2 * border.width;
    const bool isBeveled = border.kind == Kind::beveled;
    const std::array<Point, 6> upper{{{outer, outer},
                                      {outer, size.height - outer},
                                      {size.width - outer, size.height - outer},
                                      {size.width - inner, size.height - inner},
                                      {inner, size.height - inner},
                                      {inner, inner}}};
    const std::array<Point, 6> lower{{{size.width - outer, size.height - outer},
                                      {size.width - outer, outer},
                                      {outer, outer},
                                      {inner, inner},
                                      {size.width - inner, inner},
                                      {size.width - inner, size.height - inner}}};
    content.setColor(Paint::fill, DeviceColor::gray(isBeveled ? 1 : 0.5));
    appendPolygon(content, upper);
    content.fill().setColor(Paint::fill, DeviceColor::gray(isBeveled ? 0.5 : 0.75));
    appendPolygon(content, lower);
    content.fill();
}

/// The square around the inscribed circle.
Rect middleSquare(Size size, double inset)
{
    const double radius = std::min(size.width, size.height) / 2 - inset;
    return {size.width / 2 - radius, size.height / 2 - radius, size.width / 2 + radius,
            size.height / 2 + radius};
}

void appendBorder(ContentStream &content, Size size, const BorderStyle &border, FieldOutline outline)
{
    const double half = border.width / 2;
    if (outline == FieldOutline::circle) {
        appendEllipse(content, middleSquare(size, half));
    } else if (border.kind == Kind::underline) {
        content.beginSubpath({0, half}).appendLine({size.width, half});
    } else {
        content.appendRectangle({half, half, size.width - half, size.height - half});
    }
    content.stroke();
}

/// Draws background and border. A border that is not drawn gets the width 0.
void decorate(FieldBox &box, const std::optional<DeviceColor> &background,
              const std::optional<DeviceColor> &color, FieldOutline outline)
{
    ContentStream content(box.decoration);
    const auto state = content.saveGraphicsState();
    if (background) {
        content.setColor(Paint::fill, *background);
        if (outline == FieldOutline::circle) {
            appendEllipse(content, middleSquare(box.size, 0));
        } else {
            content.appendRectangle({0, 0, box.size.width, box.size.height});
        }
        content.fill();
    }
    if (isThick(box.border) && outline == FieldOutline::rectangle) {
        appendEdges(content, box.size, box.border);
    }
    if (color && box.border.width > 0) {
        content.setColor(Paint::stroke, *color);
        setLineStyle(content, box.border);
        appendBorder(content, box.size, box.border, outline);
    } else if (!isThick(box.border)) {
        box.border.width = 0;
    }
}

} // namespace

Rect FieldBox::inside() const
{
    const double edge = isThick(border) ? 2 * border.width : border.width;
    return {edge, edge, size.width - edge, size.height - edge};
}

FieldBox fieldBoxOf(QPDFObjectHandle widget, const Rect &rect, FieldOutline outline)
{
    QPDFObjectHandle characteristics = widget.getKey("/MK");
    const auto entry = [&characteristics](const char *key) {
        return characteristics.isDictionary() ? characteristics.getKey(key) : QPDFObjectHandle::newNull();
    };
    FieldBox box;
    const int turn = turnFrom(entry("/R"));
    box.size = turn % 180 == 0 ? Size{rect.width(), rect.height()} : Size{rect.height(), rect.width()};
    box.matrix = matrixOf(turn, box.size);
    box.border = borderStyleOf(widget);

    decorate(box, colorFrom(entry("/BG")), colorFrom(entry("/BC")), outline);
    return box;
}

} // namespace tallyfold::pdf
