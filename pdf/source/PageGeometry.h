#pragma once

#include "pdf/source/PageTree.h"
#include "pdf/syntax/Geometry.h"

namespace tallyfold::pdf {

/// How a source page is shown: which part of it, turned how, how large.
struct PageGeometry {
    /// The crop box inside the media box, in the page's own coordinates (PDF 1.7, 14.11.2).
    Rect visibleBox;
    /// Clockwise turn for display: 0, 90, 180 or 270 degrees.
    int rotation = 0;
    /// Size of a unit of the page in points; 1 for nearly every page (PDF 1.7, table 30, `/UserUnit`).
    double userUnit = 1;

    /// Size of the upright page in its own units: the visible box, sides swapped for a quarter turn.
    [[nodiscard]] Size uprightSize() const;
    /// Size of the upright page in points.
    [[nodiscard]] Size displaySize() const;
    /// From the source page's coordinates to those of an upright page with its lower left corner at the
    /// origin.
    [[nodiscard]] Matrix toUpright() const;
};

/// The geometry of `page`. Cannot fail: a box that is missing, malformed or without area is replaced as
/// viewers do, the media box by a letter page and the crop box by the media box; a turn that is not a
/// multiple of 90 degrees counts as none.
[[nodiscard]] PageGeometry geometryOf(const SourcePage &page);

/// Four numbers in any corner order as a rectangle, or nothing when they are not four finite numbers of a
/// size that a page can have.
[[nodiscard]] std::optional<Rect> rectFrom(QPDFObjectHandle array);

} // namespace tallyfold::pdf
