#include "pdf/annotations/LineEndings.h"

#include "pdf/annotations/Shapes.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <span>
#include <vector>

namespace tallyfold::pdf {

namespace {

enum class Shape { open, closed };

/// Draws `points` in coordinates of the line ending: x from its end back toward its start, y across it.
void appendShape(ContentStream &content, std::span<const Point> points, const Matrix &place, Shape shape,
                 bool isFilled)
{
    std::vector<Point> placed;
    for (const Point point : points) {
        placed.push_back(transform(place, point));
    }
    appendPolyline(content, placed);
    if (shape == Shape::open) {
        content.stroke();
    } else if (isFilled) {
        content.closeFillAndStroke();
    } else {
        content.closeAndStroke();
    }
    content.endLine();
}

} // namespace

std::string endingAt(QPDFObjectHandle endings, int index)
{
    QPDFObjectHandle name = endings;
    if (endings.isArray()) {
        name = index < endings.getArrayNItems() ? endings.getArrayItem(index) : QPDFObjectHandle::newNull();
    }
    return name.isName() ? name.getName() : "/None";
}

double lineEndingSize(double lineWidth)
{
    return 6 * std::max(lineWidth, 1.0);
}

void appendLineEnding(ContentStream &content, const std::string &name, Point end, Point from,
                      double lineWidth, bool isFilled)
{
    const double length = std::hypot(from.x - end.x, from.y - end.y);
    if (length == 0 || name == "/None") {
        return;
    }
    const double cosine = (from.x - end.x) / length;
    const double sine = (from.y - end.y) / length;
    const Matrix place{cosine, sine, -sine, cosine, end.x, end.y};
    const double size = lineEndingSize(lineWidth);
    const double half = size / 2;
    const auto draw = [&](std::initializer_list<Point> points, Shape shape) {
        appendShape(content, std::span(points.begin(), points.size()), place, shape, isFilled);
    };
    if (name == "/OpenArrow") {
        draw({{size, half}, {0, 0}, {size, -half}}, Shape::open);
    } else if (name == "/ClosedArrow") {
        draw({{size, half}, {0, 0}, {size, -half}}, Shape::closed);
    } else if (name == "/ROpenArrow") {
        draw({{-size, half}, {0, 0}, {-size, -half}}, Shape::open);
    } else if (name == "/RClosedArrow") {
        draw({{-size, half}, {0, 0}, {-size, -half}}, Shape::closed);
    } else if (name == "/Butt") {
        draw({{0, half}, {0, -half}}, Shape::open);
    } else if (name == "/Slash") {
        draw({{-half / 2, half}, {half / 2, -half}}, Shape::open);
    } else if (name == "/Square") {
        draw({{-half, -half}, {half, -half}, {half, half}, {-half, half}}, Shape::closed);
    } else if (name == "/Diamond") {
        draw({{-half, 0}, {0, -half}, {half, 0}, {0, half}}, Shape::closed);
    } else if (name == "/Circle") {
        constexpr double diagonal = 0.7071;
        const double corner = half * diagonal;
        draw({{half, 0},
              {corner, corner},
              {0, half},
              {-corner, corner},
              {-half, 0},
              {-corner, -corner},
              {0, -half},
              {corner, -corner}},
             Shape::closed);
    }
}

} // namespace tallyfold::pdf
