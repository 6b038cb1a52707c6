#pragma once

#include "pdf/syntax/ContentStream.h"

#include <span>

namespace tallyfold::pdf {

/// Append to the path (PDF 1.7, 8.5.2) without painting it: an open polyline, a closed polygon, the ellipse
/// inscribed in `rect`.
void appendPolyline(ContentStream &content, std::span<const Point> points);
void appendPolygon(ContentStream &content, std::span<const Point> corners);
void appendEllipse(ContentStream &content, const Rect &rect);

} // namespace tallyfold::pdf
