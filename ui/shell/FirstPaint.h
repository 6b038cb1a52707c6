#pragma once

#include <QObject>
#include <QWidget>

#include <functional>

namespace tallyfold {

/// Runs an action after the first paint event of a widget, so that a window is visible before long work
/// begins.
class FirstPaint final : public QObject {
    Q_OBJECT
public:
    /// Calls `action` once, from the event loop, after the first paint event of `widget`, which owns this.
    FirstPaint(QWidget &widget, std::function<void()> action);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    std::function<void()> m_action;
};

} // namespace tallyfold
