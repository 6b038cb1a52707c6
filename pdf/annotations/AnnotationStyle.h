#pragma once

#include "pdf/syntax/ContentStream.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <vector>

namespace tallyfold::pdf {

/// The border of an annotation (PDF 1.7, tables 164 and 166).
struct BorderStyle {
    enum class Kind { solid, dashed, beveled, inset, underline };
    Kind kind = Kind::solid;
    double width = 1;           ///< Points.
    std::vector<double> dashes; ///< Lengths of dashes and gaps; empty for an unbroken line.
};

/// The border style of `annotation`, from `/BS` or else `/Border`; invalid values count as missing.
[[nodiscard]] BorderStyle borderStyleOf(QPDFObjectHandle annotation);

/// The colour with the components in the array `components`: 1 for grey, 3 for RGB, 4 for CMYK; nothing for
/// any other number.
[[nodiscard]] std::optional<DeviceColor> colorFrom(QPDFObjectHandle components);

/// Sets the line width and the dash pattern of `style`.
void setLineStyle(ContentStream &content, const BorderStyle &style);

/// The constant opacity `/CA` of `annotation`, 0…1.
[[nodiscard]] double opacityOf(QPDFObjectHandle annotation);

/// The first `maxCount` numbers of `array`; empty when one is missing or not finite.
[[nodiscard]] std::vector<double> numbersIn(QPDFObjectHandle array, int maxCount = 100'000);

} // namespace tallyfold::pdf
