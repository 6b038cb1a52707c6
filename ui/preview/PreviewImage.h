#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace tallyfold {

/// A picture of a page at the width of its container and the resolution of the screen. Paper is white in
/// every colour scheme.
class PreviewImage final : public QWidget {
    Q_OBJECT
public:
    explicit PreviewImage(QWidget *parent = nullptr);

    void setImage(const QImage &image);
    [[nodiscard]] const QImage &image() const;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void fitHeight();

    QImage m_image;
    QPixmap m_scaled; ///< Scaled to the size and the screen of the last paint event.
};

} // namespace tallyfold
