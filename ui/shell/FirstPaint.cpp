#include "ui/shell/FirstPaint.h"

#include <QEvent>

#include <utility>

namespace tallyfold {

FirstPaint::FirstPaint(QWidget &widget, std::function<void()> action)
    : QObject(&widget), m_action(std::move(action))
{
    widget.installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        object->removeEventFilter(this);
        // Deferred: the paint event reaches the screen when control returns to the event loop.
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_action();
                deleteLater();
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(object, event);
}

} // namespace tallyfold
