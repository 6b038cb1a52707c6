#pragma once

#include "ui/preview/CloseUpPieces.h"

#include <QImage>
#include <QWidget>

namespace tallyfold {

/// The stamped edge of a page, enlarged. If it does not fit, only the parts with stamp lines are shown.
class CloseUp final : public QWidget {
    Q_OBJECT
public:
    explicit CloseUp(QWidget *parent = nullptr);

    /// Shows `image`, which has stamp lines at `ends`; nothing for a null image.
    void setImage(const QImage &image, const std::set<PageEnd> &ends);
    /// The full width, in device-independent pixels.
    void setWholeWidth(double width);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void fitHeight();

    QImage m_image;
    std::set<PageEnd> m_ends{PageEnd::right};
    double m_wholeWidth = 0;
};

} // namespace tallyfold
