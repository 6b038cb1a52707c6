#include "app/PageImage.h"

#include "core/check/CopyPage.h"

#include <QColorSpace>

#include <cstddef>
#include <cstring>

namespace tallyfold {

QImage imageOf(const pdf::Bitmap &bitmap)
{
    QImage image(bitmap.width, bitmap.height, QImage::Format_RGBA8888_Premultiplied);
    const auto rowBytes = static_cast<std::size_t>(bitmap.width) * 4;
    for (int row = 0; row < image.height(); ++row) {
        std::memcpy(image.scanLine(row), bitmap.pixels.data() + static_cast<std::size_t>(row) * rowBytes,
                    rowBytes);
    }
    image.setColorSpace(QColorSpace::SRgb);
    return image;
}

} // namespace tallyfold
