#pragma once

#include <QPainter>
#include <QPalette>

namespace tallyfold {

/// How thick the frame round a picture of a page is, in device-independent pixels.
inline constexpr int pictureFrame = 1;

/// Draws the frame of a picture inside of `rect`. Every side is seen at every scale of a screen.
void drawPictureFrame(QPainter &painter, const QRect &rect, const QPalette &palette);

} // namespace tallyfold
