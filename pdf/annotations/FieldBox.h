#pragma once

#include "pdf/annotations/AnnotationStyle.h"
#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <string>

namespace tallyfold::pdf {

/// The area of a form field's widget according to its appearance characteristics (PDF 1.7, table 189).
struct FieldBox {
    Size size;              ///< Size of the rotated area, in points.
    Matrix matrix;          ///< From the rotated area to the widget's.
    BorderStyle border;     ///< Width 0 for none.
    std::string decoration; ///< The operators that draw background and border.

    /// The area inside the border.
    [[nodiscard]] Rect inside() const;
};

/// The shape of a field's border.
enum class FieldOutline { rectangle, circle };

/// The box of `widget`, whose `/Rect` is `rect`.
[[nodiscard]] FieldBox fieldBoxOf(QPDFObjectHandle widget, const Rect &rect, FieldOutline outline);

} // namespace tallyfold::pdf
