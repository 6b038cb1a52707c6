#include "pdf/annotations/TextMarkup.h"

#include "pdf/annotations/MarkupForm.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

namespace tallyfold::pdf {

/// All writers give the corners of quadrilaterals as upper left, upper right, lower left, lower right,
/// although PDF 1.7 orders them otherwise.
std::optional<GeneratedForm> textMarkup(QPDFObjectHandle annotation, const std::string &subtype)
{
    constexpr std::array<std::string_view, 4> subtypes{"/Highlight", "/Underline", "/StrikeOut", "/Squiggly"};
    const std::vector<double> points = numbersIn(annotation.getKey("/QuadPoints"));
    if (std::find(subtypes.begin(), subtypes.end(), subtype) == subtypes.end() || points.size() < 8) {
        return std::nullopt;
    }
    const bool isHighlight = subtype == "/Highlight";
    std::string operators;
    ContentStream content(operators);
    if (isHighlight) {
        content.setColor(Paint::fill, colorOr(annotation, "/C", DeviceColor::rgb(1, 1, 0)));
    } else {
        content.setColor(Paint::stroke, colorOr(annotation, "/C", DeviceColor::gray(0)));
    }
    Extent extent;
    double tallest = 0;
    for (std::size_t at = 0; at + 8 <= points.size(); at += 8) {
        const double *quad = &points[at];
        const double x1 = quad[0], y1 = quad[1], x2 = quad[2], y2 = quad[3];
        const double x3 = quad[4], y3 = quad[5], x4 = quad[6], y4 = quad[7];
        for (std::size_t corner = 0; corner < 8; corner += 2) {
            extent.add(quad[corner], quad[corner + 1]);
        }
        const double height = std::hypot(x1 - x3, y1 - y3);
        tallest = std::max(tallest, height);
        if (isHighlight) { // The ends bulge by a quarter of the height, as those of a marker pen.
            const double bulge = std::abs(y1 - y3) / 4;
            content.beginSubpath({x3, y3});
            content.appendCurve({x3 - bulge, y3 + bulge}, {x1 - bulge, y1 - bulge}, {x1, y1});
            content.appendLine({x2, y2});
            content.appendCurve({x2 + bulge, y2 - bulge}, {x4 + bulge, y4 + bulge}, {x4, y4}).fill();
        } else if (subtype == "/Underline") {
            content.beginSubpath({x3, y3}).appendLine({x4, y4}).stroke();
        } else if (subtype == "/StrikeOut") {
            content.beginSubpath({(x1 + x3) / 2, (y1 + y3) / 2});
            content.appendLine({(x2 + x4) / 2, (y2 + y4) / 2}).stroke();
        } else {
            constexpr double step = 2;
            const double length = std::hypot(x4 - x3, y4 - y3);
            const int steps = static_cast<int>(std::clamp(length / step, 1.0, 2000.0));
            content.beginSubpath({x3, y3});
            for (int index = 1; index <= steps; ++index) {
                const double along = static_cast<double>(index) / steps;
                content.appendLine(
                    {x3 + (x4 - x3) * along, y3 + (y4 - y3) * along + (index % 2 == 1 ? step : 0)});
            }
            content.stroke();
        }
        content.endLine();
    }
    return markupForm(annotation, operators, extent.with(tallest / 4 + 2),
                      isHighlight ? Blending::multiply : Blending::normal);
}

} // namespace tallyfold::pdf
