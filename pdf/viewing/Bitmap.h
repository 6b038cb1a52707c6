#pragma once

#include "pdf/viewing/Pixels.h"

namespace tallyfold::pdf {

/// A picture in sRGB: 4 bytes a pixel (red, green, blue, alpha; premultiplied), rows from the top without
/// gaps.
struct Bitmap {
    int width = 0;
    int height = 0;
    Pixels pixels;
};

} // namespace tallyfold::pdf
