#pragma once

#include <QImage>

namespace tallyfold::pdf {
struct Bitmap;
}

namespace tallyfold {

/// The picture of a page as an image in sRGB.
[[nodiscard]] QImage imageOf(const pdf::Bitmap &bitmap);

} // namespace tallyfold
