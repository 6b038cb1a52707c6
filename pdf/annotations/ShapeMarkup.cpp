#include "pdf/annotations/ShapeMarkup.h"

#include "pdf/annotations/LineEndings.h"
#include "pdf/annotations/MarkupForm.h"
#include "pdf/annotations/Shapes.h"
#include "pdf/source/PageGeometry.h"

#include <vector>

namespace tallyfold::pdf {

namespace {

/// The operator that paints a closed path; empty when there is nothing to paint it with.
const char *closedPaint(bool isFilled, bool isStroked)
{
    return isFilled ? (isStroked ? "B\n" : "f\n") : (isStroked ? "S\n" : "n\n");
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
    const std::string fill = colorOperators(annotation.getKey("/IC"), Paint::fill);
    std::string content = fill + colorOr(annotation, "/C", Paint::stroke, "0 G ") + lineOperators(border);
    if (isSquare) {
        appendRectangle(content, path);
    } else {
        appendEllipse(content, path);
    }
    content.append(closedPaint(!fill.empty(), border.width > 0));
    return markupForm(annotation, content, outer);
}

/// Appends lines from point to point, of coordinates in pairs.
void appendPolyline(std::string &out, const std::vector<double> &coordinates, Extent &extent)
{
    for (std::size_t at = 0; at + 2 <= coordinates.size(); at += 2) {
        extent.add(coordinates[at], coordinates[at + 1]);
        if (at == 0) {
            appendMoveTo(out, coordinates[at], coordinates[at + 1]);
        } else {
            appendLineTo(out, coordinates[at], coordinates[at + 1]);
        }
    }
}

std::optional<GeneratedForm> lineOrPolygon(QPDFObjectHandle annotation, const std::string &subtype)
{
    const std::vector<double> points = numbersIn(annotation.getKey(subtype == "/Line" ? "/L" : "/Vertices"));
    if (points.size() < 4) {
        return std::nullopt;
    }
    const BorderStyle border = borderStyleOf(annotation);
    const bool isClosed = subtype == "/Polygon";
    const std::string fill = colorOperators(annotation.getKey("/IC"), Paint::fill);
    std::string content = fill + colorOr(annotation, "/C", Paint::stroke, "0 G ") + lineOperators(border);
    Extent extent;
    appendPolyline(content, points, extent);
    if (isClosed) {
        content.append("h ").append(closedPaint(!fill.empty(), border.width > 0));
    } else {
        content.append(border.width > 0 ? "S\n" : "n\n");
        const std::size_t last = points.size() / 2 * 2 - 2;
        QPDFObjectHandle endings = annotation.getKey("/LE");
        appendLineEnding(content, endingAt(endings, 0), {points[0], points[1]}, {points[2], points[3]},
                         border.width, !fill.empty());
        appendLineEnding(content, endingAt(endings, 1), {points[last], points[last + 1]},
                         {points[last - 2], points[last - 1]}, border.width, !fill.empty());
    }
    return markupForm(annotation, content, extent.with(lineEndingSize(border.width) + border.width));
}

std::optional<GeneratedForm> ink(QPDFObjectHandle annotation)
{
    QPDFObjectHandle strokes = annotation.getKey("/InkList");
    const BorderStyle border = borderStyleOf(annotation);
    std::string content =
        colorOr(annotation, "/C", Paint::stroke, "0 G ") + lineOperators(border) + "1 J 1 j ";
    Extent extent;
    bool hasAny = false;
    for (int stroke = 0, count = strokes.isArray() ? strokes.getArrayNItems() : 0; stroke < count; ++stroke) {
        const std::vector<double> points = numbersIn(strokes.getArrayItem(stroke));
        if (points.size() >= 2) {
            appendPolyline(content, points, extent);
            content.append("S\n");
            hasAny = true;
        }
    }
    return hasAny ? std::optional(markupForm(annotation, content, extent.with(border.width))) : std::nullopt;
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
