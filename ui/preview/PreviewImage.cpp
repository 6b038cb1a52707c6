#include "ui/preview/PreviewImage.h"

#include "ui/preview/PictureFrame.h"

#include <QPainter>

namespace tallyfold {

PreviewImage::PreviewImage(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PreviewImage::setImage(const QImage &image)
{
    m_image = image;
    m_scaled = QPixmap();
    fitHeight();
    update();
}

const QImage &PreviewImage::image() const
{
    return m_image;
}

void PreviewImage::fitHeight()
{
    if (!m_image.isNull()) {
        const double inner = width() - 2 * pictureFrame;
        setFixedHeight(qRound(inner * m_image.height() / m_image.width()) + 2 * pictureFrame);
    }
}

void PreviewImage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitHeight();
}

void PreviewImage::paintEvent(QPaintEvent *)
{
    if (m_image.isNull()) {
        return;
    }
    QPainter painter(this);
    const double scale = devicePixelRatioF();
    const QRect place = rect().adjusted(pictureFrame, pictureFrame, -pictureFrame, -pictureFrame);
    const QSize pixels = (QSizeF(place.size()) * scale).toSize();
    if (m_scaled.size() != pixels) {
        m_scaled =
            QPixmap::fromImage(m_image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        m_scaled.setDevicePixelRatio(scale);
    }
    painter.drawPixmap(place.topLeft(), m_scaled);
    drawPictureFrame(painter, rect(), palette());
}

} // namespace tallyfold
