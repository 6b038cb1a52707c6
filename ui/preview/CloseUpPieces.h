#pragma once

#include "core/StampSettings.h"

#include <QList>

#include <set>

namespace tallyfold {

/// A part of the page width that has stamp lines.
enum class PageEnd { left, center, right };

/// The parts with stamp lines at the edge with the Bates number, from left to right.
[[nodiscard]] std::set<PageEnd> stampedEnds(const StampSettings &settings);

/// A part of a close-up and its position on the screen, in the same unit, from the left of the close-up and
/// of the available space.
struct CloseUpPiece {
    double from = 0;
    double width = 0;
    double shownFrom = 0;

    bool operator==(const CloseUpPiece &) const = default;
};

/// The visible parts of a close-up of width `whole` in a space of width `room`: all of it if it fits;
/// otherwise its `ends`, at least one, with equal widths and `gap` between them.
[[nodiscard]] QList<CloseUpPiece> closeUpPieces(double whole, double room, const std::set<PageEnd> &ends,
                                                double gap);

} // namespace tallyfold
