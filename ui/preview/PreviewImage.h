#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace tallyfold {

/// A picture of a page, as wide as its place and as sharp as the screen. Paper stays white in every scheme.
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
    QPixmap m_scaled; ///< For the size and the screen it was last painted on.
};

} // namespace tallyfold
