#pragma once

#include <qpdf/QPDFObjectHandle.hh>

#include <string>
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

/// Whether lines and areas are coloured.
enum class Paint { stroke, fill };

/// The operators that choose the colour in `components` (none for transparent, 1 grey, 3 RGB, 4 CMYK), ended
/// by a space; empty for no colour.
[[nodiscard]] std::string colorOperators(QPDFObjectHandle components, Paint paint);

/// The operators that choose the line width and dashes of `style`.
[[nodiscard]] std::string lineOperators(const BorderStyle &style);

/// The constant opacity `/CA` of `annotation`, 0…1.
[[nodiscard]] double opacityOf(QPDFObjectHandle annotation);

/// The numbers in `array`, at most `most`; empty when one is missing or not finite.
[[nodiscard]] std::vector<double> numbersIn(QPDFObjectHandle array, int most = 100'000);

/// Appends numbers, each followed by a space.
void appendNumbers(std::string &out, std::initializer_list<double> numbers);

} // namespace tallyfold::pdf
