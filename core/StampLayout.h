#pragma once

#include "core/StampSettings.h"
#include "pdf/syntax/Geometry.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tallyfold {

/// The measures of a stamp line, in points.
struct MeasuredLine {
    StampPosition position = StampPosition::bottomRight;
    double width = 0;
    double ascent = 0;
    double descent = 0; ///< Below the baseline, a positive number.
};

/// Where a stamp line is drawn, in points from the lower left corner of the upright page.
struct PlacedLine {
    std::size_t index = 0; ///< Index of the line in the argument of `layOut`.
    double x = 0;          ///< Left end of the baseline.
    double baseline = 0;
    pdf::Rect box; ///< The white box behind the line, 2 points larger than the text on every side.
};

/// Places `lines` on a page. The result is in drawing order: position by position from the top left to the
/// bottom right; lines at the same position are stacked downward in the given order, `gap` points apart. A
/// stack at the top begins `margin` points below the top edge of the page, a stack at the bottom ends
/// `margin` points above its bottom edge. A stack that is taller than the page overflows at the bottom.
[[nodiscard]] std::vector<PlacedLine> layOut(std::span<const MeasuredLine> lines, const pdf::Size &page,
                                             double margin, double gap);

} // namespace tallyfold
