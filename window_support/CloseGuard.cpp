#include "window_support/CloseGuard.h"

#include <QEvent>

namespace tallyfold {

CloseGuard &CloseGuard::shared()
{
    static CloseGuard guard;
    return guard;
}

QWidget *CloseGuard::main() const
{
    return m_main;
}

void CloseGuard::install(QWidget *window)
{
    m_main = window;
    if (window != nullptr) {
        window->installEventFilter(this); // The same filter twice counts once.
    }
}

bool CloseGuard::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Close || shouldClose()) {
        return QObject::eventFilter(object, event);
    }
    event->ignore();
    return true;
}

} // namespace tallyfold
