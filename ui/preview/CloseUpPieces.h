#pragma once

#include "core/StampSettings.h"

#include <QList>

#include <set>

namespace tallyfold {

/// A part of a page's width that bears lines of the stamp.
enum class PageEnd { left, center, right };

/// Those of the edge that bears the Bates number, in the order of the page.
[[nodiscard]] std::set<PageEnd> stampedEnds(const StampSettings &settings);

/// A part of a close-up, and where it is shown. Lengths are of the same unit, from the left of the whole
/// close-up and of its room.
struct CloseUpPiece {
    double from = 0;
    double width = 0;
    double shownFrom = 0;

    bool operator==(const CloseUpPiece &) const = default;
};

/// What is shown of a close-up that is `whole` wide where there is `room`: all of it, if it fits in; else its
/// `ends`, which there is at least one of, in shares of one width and `gap` apart.
[[nodiscard]] QList<CloseUpPiece> closeUpPieces(double whole, double room, const std::set<PageEnd> &ends,
                                                double gap);

} // namespace tallyfold
