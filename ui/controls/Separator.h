#pragma once

#include <QWidget>

namespace tallyfold {

/// A fine line across, between a column and the bar under it.
class Separator final : public QWidget {
    Q_OBJECT
public:
    explicit Separator(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tallyfold
