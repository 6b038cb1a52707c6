#include "ui/shell/FirstPaint.h"

#include <QEvent>

#include <utility>

namespace tallyfold {

FirstPaint::FirstPaint(QWidget &widget, std::function<void()> then)
    : QObject(&widget), m_then(std::move(then))
{
    widget.installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        object->removeEventFilter(this);
        // What is painted reaches the screen when the event loop goes on.
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_then();
                deleteLater();
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(object, event);
}

} // namespace tallyfold
