#pragma once

#include "pdf/annotations/AnnotationStyle.h"
#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <string>

namespace tallyfold::pdf {

/// The area of a form field's widget, as its appearance characteristics describe it (PDF 1.7, table 189).
struct FieldBox {
    Size size;              ///< Of the area as the text in it runs, points.
    Matrix matrix;          ///< From that area to one of the widget's width and height.
    BorderStyle border;     ///< Of width 0 when there is none.
    std::string decoration; ///< The operators that draw background and border.

    /// The part inside of the border.
    [[nodiscard]] Rect inside() const;
};

/// How a border follows the outline of a field.
enum class FieldOutline { rectangle, circle };

/// The box of `widget`, whose `/Rect` is `rect`.
[[nodiscard]] FieldBox fieldBoxOf(QPDFObjectHandle widget, const Rect &rect, FieldOutline outline);

} // namespace tallyfold::pdf
