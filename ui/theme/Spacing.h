#pragma once

/// Distances between the parts of a window, in device-independent pixels, on a grid of 4.
namespace tallyfold::spacing {

inline constexpr int tight = 4;    ///< Between an item and its explanation.
inline constexpr int normal = 8;   ///< Between controls that belong together.
inline constexpr int wide = 12;    ///< Between rows of a form, and within cards.
inline constexpr int section = 16; ///< Between sections, and to the edge of a column.
inline constexpr int sheet = 24;   ///< To the edge of a sheet.

} // namespace tallyfold::spacing
