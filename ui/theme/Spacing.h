#pragma once

/// Distances between the parts of a window, in device-independent pixels: one grid of four.
namespace tallyfold::spacing {

inline constexpr int tight = 4;    ///< Between a thing and its explanation.
inline constexpr int normal = 8;   ///< Between controls that belong together.
inline constexpr int wide = 12;    ///< Between rows of a form, and inside of cards.
inline constexpr int section = 16; ///< Between sections, and to the edge of a column.
inline constexpr int sheet = 24;   ///< To the edge of a sheet.

} // namespace tallyfold::spacing
