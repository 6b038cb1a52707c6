#pragma once

#include <string>
#include <vector>

namespace tallyfold::tests {

/// One page of a small PDF file, in PDF syntax.
struct SmallPage {
    std::string content;                  ///< Its content stream; Helvetica is /F, Courier is /C.
    std::string mediaBox = "0 0 612 792"; ///< The four numbers.
    std::string entries = {};             ///< Further entries of the page, such as "/Rotate 90".
};

/// A content that shows `text` in Helvetica of 10 points, its baseline beginning at (x, y).
[[nodiscard]] std::string showText(double x, double y, const std::string &text);

/// The bytes of a PDF file with these pages.
[[nodiscard]] std::string smallPdf(const std::vector<SmallPage> &pages);

} // namespace tallyfold::tests
