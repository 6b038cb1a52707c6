#include "pdf/annotations/Shapes.h"

namespace tallyfold::pdf {

namespace {

/// Distance of the control points of a quarter circle from its ends, in radii.
constexpr double quarterCircle = 0.5522847498;

} // namespace

void appendPolyline(ContentStream &content, std::span<const Point> points)
{
    for (std::size_t index = 0; index < points.size(); ++index) {
        index == 0 ? content.beginSubpath(points[index]) : content.appendLine(points[index]);
    }
}

void appendPolygon(ContentStream &content, std::span<const Point> corners)
{
    appendPolyline(content, corners);
    content.closeSubpath();
}

void appendEllipse(ContentStream &content, const Rect &rect)
{
    const double x = (rect.minX + rect.maxX) / 2;
    const double y = (rect.minY + rect.maxY) / 2;
    const double controlX = rect.width() / 2 * quarterCircle;
    const double controlY = rect.height() / 2 * quarterCircle;
    content.beginSubpath({rect.minX, y})
        .appendCurve({rect.minX, y + controlY}, {x - controlX, rect.maxY}, {x, rect.maxY})
        .appendCurve({x + controlX, rect.maxY}, {rect.maxX, y + controlY}, {rect.maxX, y})
        .appendCurve({rect.maxX, y - controlY}, {x + controlX, rect.minY}, {x, rect.minY})
        .appendCurve({x - controlX, rect.minY}, {rect.minX, y - controlY}, {rect.minX, y})
        .closeSubpath();
}

} // namespace tallyfold::pdf
