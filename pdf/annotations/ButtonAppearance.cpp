#include "pdf/annotations/ButtonAppearance.h"

#include "pdf/annotations/AnnotationAppearance.h"
#include "pdf/annotations/Shapes.h"

#include <algorithm>
#include <cmath>

namespace tallyfold::pdf {

namespace {

/// A mark takes this part of the shorter side of its box.
constexpr double partOfBox = 0.7;

void appendStar(std::string &out, Point middle, double radius)
{
    constexpr int points = 5;
    constexpr double pi = 3.14159265358979;
    constexpr double innerRadius = 0.382; // Where the sides of a five-pointed star cross.
    for (int index = 0; index < 2 * points; ++index) {
        const double angle = pi / 2 + index * pi / points;
        const double reach = index % 2 == 0 ? radius : radius * innerRadius;
        const double x = middle.x + reach * std::cos(angle);
        const double y = middle.y + reach * std::sin(angle);
        index == 0 ? appendMoveTo(out, x, y) : appendLineTo(out, x, y);
    }
    out.append("h ");
}

/// A polygon given in a square from -1 to 1, around `middle`.
void appendScaled(std::string &out, Point middle, double half,
                  std::initializer_list<std::pair<double, double>> corners)
{
    bool isFirst = true;
    for (const auto &[x, y] : corners) {
        const Point corner{middle.x + x * half, middle.y + y * half};
        isFirst ? appendMoveTo(out, corner.x, corner.y) : appendLineTo(out, corner.x, corner.y);
        isFirst = false;
    }
    out.append("h ");
}

void appendMark(std::string &out, ButtonMark mark, Point middle, double half)
{
    switch (mark) {
    case ButtonMark::check:
        appendScaled(out, middle, half,
                     {{-1, -0.05}, {-0.7, 0.25}, {-0.3, -0.35}, {0.75, 1}, {1, 0.85}, {-0.25, -1}});
        break;
    case ButtonMark::disc:
        appendEllipse(out, {middle.x - half * partOfBox, middle.y - half * partOfBox,
                            middle.x + half * partOfBox, middle.y + half * partOfBox});
        break;
    case ButtonMark::cross:
        appendScaled(out, middle, half,
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
        appendScaled(out, middle, half, {{-1, 0}, {0, 1}, {1, 0}, {0, -1}});
        break;
    case ButtonMark::square:
        appendScaled(out, middle, half * partOfBox, {{-1, -1}, {-1, 1}, {1, 1}, {1, -1}});
        break;
    case ButtonMark::star:
        appendStar(out, middle, half);
        break;
    }
    out.append("f ");
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

void appendButtonMark(std::string &content, QPDFObjectHandle widget, const TextBox &box)
{
    if (appearanceState(widget) == "/Off") {
        return;
    }
    const Point middle{(box.area.minX + box.area.maxX) / 2, (box.area.minY + box.area.maxY) / 2};
    const double half = std::min(box.area.width(), box.area.height()) / 2 * partOfBox;
    if (half <= 0) {
        return;
    }
    content.append("q ").append(box.color);
    appendMark(content, buttonMark(widget), middle, half);
    content.append("Q\n");
}

} // namespace tallyfold::pdf
