#pragma once

#include "pdf/syntax/Geometry.h"

#include <initializer_list>
#include <string>
#include <utility>

namespace tallyfold::pdf {

/// Append the operators that begin or continue a path (PDF 1.7, 8.5.2), coordinates in points. None paints
/// it.
void appendMoveTo(std::string &out, double x, double y);
void appendLineTo(std::string &out, double x, double y);

/// Appends a rectangle to the path.
void appendRectangle(std::string &out, const Rect &rect);

/// Appends the ellipse that fills `rect` to the path.
void appendEllipse(std::string &out, const Rect &rect);

/// Appends a closed polygon to the path.
void appendPolygon(std::string &out, std::initializer_list<std::pair<double, double>> corners);

} // namespace tallyfold::pdf
