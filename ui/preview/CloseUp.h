#pragma once

#include "ui/preview/CloseUpPieces.h"

#include <QImage>
#include <QWidget>

namespace tallyfold {

/// The stamped edge of a page, larger than the page is shown. Where it is wider than its place, the ends that
/// bear lines are shown.
class CloseUp final : public QWidget {
    Q_OBJECT
public:
    explicit CloseUp(QWidget *parent = nullptr);

    /// Shows `image`, of whose edge `ends` bear lines; nothing for a null one.
    void setImage(const QImage &image, const std::set<PageEnd> &ends);
    /// How wide all of it would be, in device-independent pixels.
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
