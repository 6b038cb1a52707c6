#pragma once

#include "core/StampSettings.h"
#include "pdf/syntax/Geometry.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tallyfold {

/// A stamp line as far as its place on the page is concerned; lengths in points.
struct MeasuredLine {
    StampPosition position = StampPosition::bottomRight;
    double width = 0;
    double ascent = 0;
    double descent = 0; ///< Below the baseline, a positive number.
};

/// Where a stamp line is drawn, in points from the lower left corner of the upright page.
struct PlacedLine {
    std::size_t index = 0; ///< Of the line among those that were laid out.
    double x = 0;          ///< Left end of the baseline.
    double baseline = 0;
    pdf::Rect box; ///< The white box behind the line, 2 points larger than the text on every side.
};

/// Places `lines` on a page, in the order in which they are drawn: spot by spot from the top left to the
/// bottom right, lines of one spot stacked downward in the order given with `gap` points between them. The
/// stack of a top spot hangs `margin` points below the page's top edge, that of a bottom spot stands `margin`
/// points above its bottom edge; it leaves the page only when it is taller than the page, and then at the
/// bottom.
[[nodiscard]] std::vector<PlacedLine> layOut(std::span<const MeasuredLine> lines, const pdf::Size &page,
                                             double margin, double gap);

} // namespace tallyfold
