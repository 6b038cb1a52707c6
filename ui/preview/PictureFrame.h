#pragma once

#include <QPainter>
#include <QPalette>

namespace tallyfold {

/// The width of the frame around the picture of a page, in device-independent pixels.
inline constexpr int pictureFrame = 1;

/// Draws the frame of a picture within `rect`. All sides are visible at any device pixel ratio.
void drawPictureFrame(QPainter &painter, const QRect &rect, const QPalette &palette);

} // namespace tallyfold
