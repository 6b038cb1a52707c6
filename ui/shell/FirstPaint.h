#pragma once

#include <QObject>
#include <QWidget>

#include <functional>

namespace tallyfold {

/// Does something once a widget has been painted for the first time, so that a window is seen before long
/// work begins.
class FirstPaint final : public QObject {
    Q_OBJECT
public:
    /// Calls `then` once, from the event loop, after the first painting of `widget`, which owns this.
    FirstPaint(QWidget &widget, std::function<void()> then);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    std::function<void()> m_then;
};

} // namespace tallyfold
