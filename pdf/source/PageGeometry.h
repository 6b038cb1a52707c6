#pragma once

#include "pdf/source/PageTree.h"
#include "pdf/syntax/Geometry.h"

namespace tallyfold::pdf {

/// How a source page is displayed: its visible part, its rotation, its scale.
struct PageGeometry {
    /// The crop box inside the media box, in the page's own coordinates (PDF 1.7, 14.11.2).
    Rect visibleBox;
    /// Clockwise rotation for display: 0, 90, 180 or 270 degrees.
    int rotation = 0;
    /// The `/UserUnit` in points (PDF 1.7, table 30); nearly always 1.
    double userUnit = 1;

    /// Size of the upright page in its own units: that of the visible box, sides swapped for a rotation by
    /// 90 or 270 degrees.
    [[nodiscard]] Size uprightSize() const;
    /// Size of the upright page in points.
    [[nodiscard]] Size displaySize() const;
    /// Maps the source page's coordinates to those of an upright page with its lower left corner at the
    /// origin.
    [[nodiscard]] Matrix toUpright() const;
};

/// The geometry of `page`. Never fails: a box that is missing, malformed or empty is replaced as viewers do,
/// the media box by a letter page and the crop box by the media box; a rotation that is not a multiple of 90
/// degrees counts as 0.
[[nodiscard]] PageGeometry geometryOf(const SourcePage &page);

/// The rectangle of four numbers in any order of corners (PDF 1.7, 7.9.5); nothing unless they are four
/// finite numbers of a size that a page can have.
[[nodiscard]] std::optional<Rect> rectFrom(QPDFObjectHandle array);

} // namespace tallyfold::pdf
