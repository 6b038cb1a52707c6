#include "window_support/WindowReader.h"

#include <QEvent>

#include <utility>

namespace tallyfold {

WindowReader::WindowReader(std::function<void(QWidget *)> found, QWidget *parent)
    : QWidget(parent), m_found(std::move(found))
{
    setFixedSize(0, 0);
    setFocusPolicy(Qt::NoFocus);
    look();
}

bool WindowReader::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::ParentChange) {
        look();
    }
    return isHandled;
}

bool WindowReader::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::ParentChange) {
        look();
    }
    return QWidget::eventFilter(object, event);
}

void WindowReader::look()
{
    // Whoever stands between this and the window may be moved into another one, with all that is in it.
    for (QWidget *above = parentWidget(); above != nullptr; above = above->parentWidget()) {
        above->installEventFilter(this);
    }
    QWidget *const top = parentWidget() == nullptr ? nullptr : window();
    QWidget *const found = top != nullptr && top->isWindow() && top != this ? top : nullptr;
    if (found != nullptr && found != m_window) {
        m_window = found;
        m_found(found);
    }
    m_window = found;
}

} // namespace tallyfold
