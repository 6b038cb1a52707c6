#include "pdf/annotations/ShapeMarkup.h"

#include "pdf/annotations/LineEndings.h"
#include "pdf/annotations/MarkupForm.h"
#include "pdf/annotations/Shapes.h"
#include "pdf/source/PageGeometry.h"

#include <vector>

namespace tallyfold::pdf {

namespace {

/// Paints the path and ends the line.
void paintPath(ContentStream &content, bool isFilled, bool isStroked)
{
    if (isFilled && isStroked) {
        content.fillAndStroke();
    } else if (isFilled) {
        content.fill();
    } else if (isStroked) {
        content.stroke();
    } else {
        content.endPath();
    }
    content.endLine();
}

/// Sets the colours and line style of `annotation`; gives whether it has an interior colour.
bool setStyle(ContentStream &content, QPDFObjectHandle annotation, const BorderStyle &border)
{
    const std::optional<DeviceColor> interior = colorFrom(annotation.getKey("/IC"));
    if (interior) {
        content.setColor(Paint::fill, *interior);
    }
    content.setColor(Paint::stroke, colorOr(annotation, "/C", DeviceColor::gray(0)));
    setLineStyle(content, border);
    return interior.has_value();
}

std::optional<GeneratedForm> squareOrCircle(QPDFObjectHandle annotation, bool isSquare)
{
    std::optional<Rect> rect = rectFrom(annotation.getKey("/Rect"));
    if (!rect) {
        return std::nullopt;
    }
    const Rect outer = *rect;
    const std::vector<double> inset = numbersIn(annotation.getKey("/RD"), 4);
    if (inset.size() == 4) {
        rect =
            Rect{rect->minX + inset[0], rect->minY + inset[1], rect->maxX - inset[2], rect->maxY - inset[3]};
    }
    const BorderStyle border = borderStyleOf(annotation);
    const double half = border.width / 2;
    const Rect path{rect->minX + half, rect->minY + half, rect->maxX - half, rect->maxY - half};
    if (path.width() <= 0 || path.height() <= 0) {
        return std::nullopt;
    }
    std::string operators;
    ContentStream content(operators);
    const bool isFilled = setStyle(content, annotation, border);
    if (isSquare) {
        content.appendRectangle(path);
    } else {
        appendEllipse(content, path);
    }
    paintPath(content, isFilled, border.width > 0);
    return markupForm(annotation, operators, outer);
}

/// The points whose coordinates `array` holds in pairs.
std::vector<Point> pointsIn(QPDFObjectHandle array)
{
    const std::vector<double> coordinates = numbersIn(array);
    std::vector<Point> points;
    for (std::size_t at = 0; at + 2 <= coordinates.size(); at += 2) {
        points.push_back({coordinates[at], coordinates[at + 1]});
    }
    return points;
}

void addTo(Extent &extent, const std::vector<Point> &points)
{
    for (const Point point : points) {
        extent.add(point.x, point.y);
    }
}

std::optional<GeneratedForm> lineOrPolygon(QPDFObjectHandle annotation, const std::string &subtype)
{
    const std::vector<Point> points = pointsIn(annotation.getKey(subtype == "/Line" ? "/L" : "/Vertices"));
    if (points.size() < 2) {
        return std::nullopt;
    }
    const BorderStyle border = borderStyleOf(annotation);
    const bool isClosed = subtype == "/Polygon";
    std::string operators;
    ContentStream content(operators);
    const bool isFilled = setStyle(content, annotation, border);
    Extent extent;
    addTo(extent, points);
    if (isClosed) {
        appendPolygon(content, points);
        paintPath(content, isFilled, border.width > 0);
    } else {
        appendPolyline(content, points);
        paintPath(content, false, border.width > 0);
        QPDFObjectHandle endings = annotation.getKey("/LE");
        appendLineEnding(content, endingAt(endings, 0), points[0], points[1], border.width, isFilled);
        appendLineEnding(content, endingAt(endings, 1), points.back(), points[points.size() - 2],
                         border.width, isFilled);
    }
    return markupForm(annotation, operators, extent.with(lineEndingSize(border.width) + border.width));
}

std::optional<GeneratedForm> ink(QPDFObjectHandle annotation)
{
    QPDFObjectHandle strokes = annotation.getKey("/InkList");
    const BorderStyle border = borderStyleOf(annotation);
    std::string operators;
    ContentStream content(operators);
    content.setColor(Paint::stroke, colorOr(annotation, "/C", DeviceColor::gray(0)));
    setLineStyle(content, border);
    content.setLineCap(LineCap::round).setLineJoin(LineJoin::round);
    Extent extent;
    bool hasAny = false;
    for (int stroke = 0, count = strokes.isArray() ? strokes.getArrayNItems() : 0; stroke < count; ++stroke) {
        const std::vector<Point> points = pointsIn(strokes.getArrayItem(stroke));
        if (!points.empty()) {
            addTo(extent, points);
            appendPolyline(content, points);
            content.stroke().endLine();
            hasAny = true;
        }
    }
    return hasAny ? std::optional(markupForm(annotation, operators, extent.with(border.width)))
                  : std::nullopt;
}

} // namespace

std::optional<GeneratedForm> shapeMarkup(QPDFObjectHandle annotation, const std::string &subtype)
{
    if (subtype == "/Square" || subtype == "/Circle") {
        return squareOrCircle(annotation, subtype == "/Square");
    }
    if (subtype == "/Line" || subtype == "/Polygon" || subtype == "/PolyLine") {
        return lineOrPolygon(annotation, subtype);
    }
    return subtype == "/Ink" ? ink(annotation) : std::nullopt;
}

} // namespace tallyfold::pdf
