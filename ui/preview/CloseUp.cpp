#include "ui/preview/CloseUp.h"

#include "ui/preview/PictureFrame.h"

#include <QPainter>

namespace tallyfold {

namespace {

constexpr double gap = 8; ///< Between the pieces.

} // namespace

CloseUp::CloseUp(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CloseUp::setImage(const QImage &image, const std::set<PageEnd> &ends)
{
    m_image = image;
    m_ends = ends;
    fitHeight();
    update();
}

void CloseUp::setWholeWidth(double width)
{
    m_wholeWidth = width;
    fitHeight();
    update();
}

void CloseUp::fitHeight()
{
    if (!m_image.isNull()) {
        setFixedHeight(qRound(m_wholeWidth * m_image.height() / m_image.width()) + 2 * pictureFrame);
    }
}

void CloseUp::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    update();
}

void CloseUp::paintEvent(QPaintEvent *)
{
    if (m_image.isNull()) {
        return;
    }
    QPainter painter(this);
    const double inPixels = m_image.width() / m_wholeWidth;
    const int height = this->height() - 2 * pictureFrame;
    const double scale = devicePixelRatioF();
    for (const CloseUpPiece &piece :
         closeUpPieces(m_wholeWidth, width() - 2 * pictureFrame, m_ends, gap + 2 * pictureFrame)) {
        const int left = qRound(piece.shownFrom);
        const int right = qRound(piece.shownFrom + piece.width);
        const QRect place(pictureFrame + left, pictureFrame, right - left, height);
        const QRect source(qRound(piece.from * inPixels), 0, qRound(piece.width * inPixels),
                           m_image.height());
        // Not scaled by QPainter, which skips pixels when it reduces an image a lot.
        QImage shown = m_image.copy(source).scaled((QSizeF(place.size()) * scale).toSize(),
                                                   Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        shown.setDevicePixelRatio(scale);
        painter.drawImage(place.topLeft(), shown);
        drawPictureFrame(painter, place.adjusted(-pictureFrame, -pictureFrame, pictureFrame, pictureFrame),
                         palette());
    }
}

} // namespace tallyfold
