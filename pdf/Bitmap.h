#pragma once

#include <cstdint>
#include <vector>

namespace tallyfold::pdf {

/// A picture in sRGB: 4 bytes a pixel (red, green, blue, alpha; premultiplied), rows from the top without
/// gaps.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

} // namespace tallyfold::pdf
