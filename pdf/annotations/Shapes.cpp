#include "pdf/annotations/Shapes.h"

#include "pdf/annotations/AnnotationStyle.h"

namespace tallyfold::pdf {

namespace {

/// How far the control points of a quarter circle lie from its ends, in radii.
constexpr double quarterCircle = 0.5522847498;

} // namespace

void appendMoveTo(std::string &out, double x, double y)
{
    appendNumbers(out, {x, y});
    out.append("m ");
}

void appendLineTo(std::string &out, double x, double y)
{
    appendNumbers(out, {x, y});
    out.append("l ");
}

void appendRectangle(std::string &out, const Rect &rect)
{
    appendNumbers(out, {rect.minX, rect.minY, rect.width(), rect.height()});
    out.append("re ");
}

void appendEllipse(std::string &out, const Rect &rect)
{
    const double x = (rect.minX + rect.maxX) / 2;
    const double y = (rect.minY + rect.maxY) / 2;
    const double controlX = rect.width() / 2 * quarterCircle;
    const double controlY = rect.height() / 2 * quarterCircle;
    appendMoveTo(out, rect.minX, y);
    appendNumbers(out, {rect.minX, y + controlY, x - controlX, rect.maxY, x, rect.maxY});
    out.append("c ");
    appendNumbers(out, {x + controlX, rect.maxY, rect.maxX, y + controlY, rect.maxX, y});
    out.append("c ");
    appendNumbers(out, {rect.maxX, y - controlY, x + controlX, rect.minY, x, rect.minY});
    out.append("c ");
    appendNumbers(out, {x - controlX, rect.minY, rect.minX, y - controlY, rect.minX, y});
    out.append("c h ");
}

void appendPolygon(std::string &out, std::initializer_list<std::pair<double, double>> corners)
{
    bool isFirst = true;
    for (const auto &[x, y] : corners) {
        isFirst ? appendMoveTo(out, x, y) : appendLineTo(out, x, y);
        isFirst = false;
    }
    out.append("h ");
}

} // namespace tallyfold::pdf
