#include "ui/preview/CloseUpPieces.h"

#include <algorithm>

namespace tallyfold {

namespace {

PageEnd endOf(StampPosition position)
{
    switch (position) {
    case StampPosition::topLeft:
    case StampPosition::bottomLeft:
        return PageEnd::left;
    case StampPosition::topCenter:
    case StampPosition::bottomCenter:
        return PageEnd::center;
    case StampPosition::topRight:
    case StampPosition::bottomRight:
        break;
    }
    return PageEnd::right;
}

/// The left edge of a piece of width `width` that shows `end`.
double startOf(PageEnd end, double whole, double width)
{
    switch (end) {
    case PageEnd::left:
        return 0;
    case PageEnd::center:
        return (whole - width) / 2;
    case PageEnd::right:
        break;
    }
    return whole - width;
}

} // namespace

std::set<PageEnd> stampedEnds(const StampSettings &settings)
{
    std::set<PageEnd> ends{endOf(settings.batesPosition)};
    const auto add = [&](bool isThere, StampPosition position) {
        if (isThere && isTop(position) == isTop(settings.batesPosition)) {
            ends.insert(endOf(position));
        }
    };
    add(!settings.legend.isEmpty(), settings.legendPosition);
    add(settings.pageOfTotal, settings.pageOfTotalPosition);
    return ends;
}

QList<CloseUpPiece> closeUpPieces(double whole, double room, const std::set<PageEnd> &ends, double gap)
{
    if (whole <= room) {
        return {{0, whole, 0}};
    }
    const auto count = static_cast<double>(ends.size());
    const double share = (room - gap * (count - 1)) / count;
    QList<CloseUpPiece> pieces;
    for (const PageEnd end : ends) {
        const double from = startOf(end, whole, share);
        if (!pieces.isEmpty() && from <= pieces.last().from + share) {
            // Adjacent pieces that touch are merged.
            return {{startOf(ends.contains(PageEnd::left) ? PageEnd::left : PageEnd::right, whole, room),
                     room, 0}};
        }
        pieces.append({from, share, static_cast<double>(pieces.size()) * (share + gap)});
    }
    return pieces;
}

} // namespace tallyfold
