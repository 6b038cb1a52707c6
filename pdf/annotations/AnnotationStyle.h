#pragma once

#include "pdf/syntax/ContentStream.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <vector>

namespace tallyfold::pdf {

/// How the outline of an annotation is drawn (PDF 1.7, tables 164 and 166).
struct BorderStyle {
    enum class Kind { solid, dashed, beveled, inset, underline };
    Kind kind = Kind::solid;
    double width = 1;           ///< Points.
    std::vector<double> dashes; ///< Lengths of dashes and gaps; empty for an unbroken line.
};

/// The border style of `annotation`, from `/BS` or else `/Border`; values that make no sense count as not
/// given.
[[nodiscard]] BorderStyle borderStyleOf(QPDFObjectHandle annotation);

/// The colour whose components `components` holds: 1 for grey, 3 for RGB, 4 for CMYK; nothing for any other
/// number of them.
[[nodiscard]] std::optional<DeviceColor> colorFrom(QPDFObjectHandle components);

/// Sets the line width and the dash pattern of `style`.
void setLineStyle(ContentStream &content, const BorderStyle &style);

/// The constant opacity `/CA` of `annotation`, 0…1.
[[nodiscard]] double opacityOf(QPDFObjectHandle annotation);

/// The numbers in `array`, at most `most`; empty when one is missing or not finite.
[[nodiscard]] std::vector<double> numbersIn(QPDFObjectHandle array, int most = 100'000);

} // namespace tallyfold::pdf
