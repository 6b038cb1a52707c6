#include "pdf/annotations/FieldBox.h"

#include "pdf/annotations/Shapes.h"

#include <algorithm>

namespace tallyfold::pdf {

namespace {

using Kind = BorderStyle::Kind;

/// The turn of a widget's contents, counterclockwise: 0, 90, 180 or 270.
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

/// The two lit and shaded edges that make a box stand out or lie deeper.
void appendEdges(std::string &out, Size size, const BorderStyle &border)
{
    const double outer = border.width;
    const double inner = 2 * border.width;
    const bool isBeveled = border.kind == Kind::beveled;
    out.append(isBeveled ? "1 g " : "0.5 g ");
    appendPolygon(out, {{outer, outer},
                        {outer, size.height - outer},
                        {size.width - outer, size.height - outer},
                        {size.width - inner, size.height - inner},
                        {inner, size.height - inner},
                        {inner, inner}});
    out.append(isBeveled ? "f 0.5 g " : "f 0.75 g ");
    appendPolygon(out, {{size.width - outer, size.height - outer},
                        {size.width - outer, outer},
                        {outer, outer},
                        {inner, inner},
                        {size.width - inner, inner},
                        {size.width - inner, size.height - inner}});
    out.append("f ");
}

/// The square in the middle of an area, which a circle fills.
Rect middleSquare(Size size, double inset)
{
    const double radius = std::min(size.width, size.height) / 2 - inset;
    return {size.width / 2 - radius, size.height / 2 - radius, size.width / 2 + radius,
            size.height / 2 + radius};
}

void appendBorder(std::string &out, Size size, const BorderStyle &border, FieldOutline outline)
{
    const double half = border.width / 2;
    if (outline == FieldOutline::circle) {
        appendEllipse(out, middleSquare(size, half));
    } else if (border.kind == Kind::underline) {
        appendNumbers(out, {0, half});
        out.append("m ");
        appendNumbers(out, {size.width, half});
        out.append("l ");
    } else {
        appendRectangle(out, {half, half, size.width - half, size.height - half});
    }
    out.append("S ");
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

    const std::string background = colorOperators(entry("/BG"), Paint::fill);
    const std::string color = colorOperators(entry("/BC"), Paint::stroke);
    std::string &out = box.decoration;
    out.append("q ");
    if (!background.empty()) {
        out.append(background);
        if (outline == FieldOutline::circle) {
            appendEllipse(out, middleSquare(box.size, 0));
        } else {
            appendRectangle(out, {0, 0, box.size.width, box.size.height});
        }
        out.append("f ");
    }
    if (isThick(box.border) && outline == FieldOutline::rectangle) {
        appendEdges(out, box.size, box.border);
    }
    if (!color.empty() && box.border.width > 0) {
        out.append(color).append(lineOperators(box.border));
        appendBorder(out, box.size, box.border, outline);
    } else if (!isThick(box.border)) {
        box.border.width = 0;
    }
    out.append("Q\n");
    return box;
}

} // namespace tallyfold::pdf
