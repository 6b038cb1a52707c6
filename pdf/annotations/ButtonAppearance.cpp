#include "pdf/annotations/ButtonAppearance.h"

#include "pdf/annotations/AnnotationAppearance.h"
#include "pdf/annotations/Shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// The size of a mark relative to the shorter side of its box.
constexpr double partOfBox = 0.7;

void appendStar(ContentStream &content, Point middle, double radius)
{
    constexpr std::size_t tips = 5;
    constexpr double pi = 3.14159265358979;
    constexpr double innerRadius = 0.382; // Of a regular pentagram.
    std::array<Point, 2 * tips> corners;
    for (std::size_t index = 0; index < corners.size(); ++index) {
        const double angle = pi / 2 + static_cast<double>(index) * pi / tips;
        const double reach = index % 2 == 0 ? radius : radius * innerRadius;
        corners[index] = {middle.x + reach * std::cos(angle), middle.y + reach * std::sin(angle)};
    }
    appendPolygon(content, corners);
}

/// A polygon with corners in the square from -1 to 1, scaled by `half` around `middle`.
void appendScaled(ContentStream &content, Point middle, double half, std::initializer_list<Point> corners)
{
    std::vector<Point> placed;
    for (const Point corner : corners) {
        placed.push_back({middle.x + corner.x * half, middle.y + corner.y * half});
    }
    appendPolygon(content, placed);
}

void appendMark(ContentStream &content, ButtonMark mark, Point middle, double half)
{
    switch (mark) {
    case ButtonMark::check:
        appendScaled(content, middle, half,
                     {{-1, -0.05}, {-0.7, 0.25}, {-0.3, -0.35}, {0.75, 1}, {1, 0.85}, {-0.25, -1}});
        break;
    case ButtonMark::disc:
        appendEllipse(content, {middle.x - half * partOfBox, middle.y - half * partOfBox,
                                middle.x + half * partOfBox, middle.y + half * partOfBox});
        break;
    case ButtonMark::cross:
        appendScaled(content, middle, half,
                     {{-1, -0.7},
                      {-0.3, 0},
                      {-1, 0.7},
                      {-0.7, 1},
                      {0, 0.3},
                      {0.7, 1},
                      {1, 0.7},
                      {0.3, 0},
                      {1, -0.7},
                      {0.7, -1},
                      {0, -0.3},
                      {-0.7, -1}});
        break;
    case ButtonMark::diamond:
        appendScaled(content, middle, half, {{-1, 0}, {0, 1}, {1, 0}, {0, -1}});
        break;
    case ButtonMark::square:
        appendScaled(content, middle, half * partOfBox, {{-1, -1}, {-1, 1}, {1, 1}, {1, -1}});
        break;
    case ButtonMark::star:
        appendStar(content, middle, half);
        break;
    }
    content.fill();
}

} // namespace

bool isPushButton(long long flags)
{
    return (flags & (1LL << 16)) != 0;
}

bool isRadioButton(long long flags)
{
    return !isPushButton(flags) && (flags & (1LL << 15)) != 0;
}

ButtonMark buttonMark(QPDFObjectHandle widget)
{
    const QString caption = buttonCaption(widget);
    switch (caption.isEmpty() ? u'\0' : caption.front().unicode()) {
    case u'4':
        return ButtonMark::check;
    case u'l':
        return ButtonMark::disc;
    case u'8':
        return ButtonMark::cross;
    case u'u':
        return ButtonMark::diamond;
    case u'n':
        return ButtonMark::square;
    case u'H':
        return ButtonMark::star;
    default:
        break;
    }
    QPDFObjectHandle flags = inheritedFieldValue(widget, "/Ff");
    return flags.isInteger() && isRadioButton(flags.getIntValue()) ? ButtonMark::disc : ButtonMark::check;
}

QString buttonCaption(QPDFObjectHandle widget)
{
    QPDFObjectHandle characteristics = widget.getKey("/MK");
    return characteristics.isDictionary() ? fieldText(characteristics.getKey("/CA")) : QString();
}

void appendButtonMark(ContentStream &content, QPDFObjectHandle widget, const TextBox &box)
{
    if (appearanceState(widget) == "/Off") {
        return;
    }
    const Point middle{(box.area.minX + box.area.maxX) / 2, (box.area.minY + box.area.maxY) / 2};
    const double half = std::min(box.area.width(), box.area.height()) / 2 * partOfBox;
    if (half <= 0) {
        return;
    }
    const auto state = content.saveGraphicsState();
    content.setColor(Paint::fill, box.color);
    appendMark(content, buttonMark(widget), middle, half);
}

} // namespace tallyfold::pdf
