#include "ui/preview/PictureFrame.h"

#include "ui/theme/Tones.h"

namespace tallyfold {

void drawPictureFrame(QPainter &painter, const QRect &rect, const QPalette &palette)
{
    // Filled rectangles align with pixels and are at least one pixel wide, unlike lines.
    const QColor color = colorOf(Tone::border, palette);
    const QRect inner = rect.adjusted(pictureFrame, pictureFrame, -pictureFrame, -pictureFrame);
    painter.fillRect(QRect(rect.left(), rect.top(), rect.width(), pictureFrame), color);
    painter.fillRect(QRect(rect.left(), inner.bottom() + 1, rect.width(), pictureFrame), color);
    painter.fillRect(QRect(rect.left(), rect.top(), pictureFrame, rect.height()), color);
    painter.fillRect(QRect(inner.right() + 1, rect.top(), pictureFrame, rect.height()), color);
}

} // namespace tallyfold
