#pragma once

#include <QWidget>

namespace tallyfold {

/// A horizontal line between a column and the bar below it.
class Separator final : public QWidget {
    Q_OBJECT
public:
    explicit Separator(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tallyfold
