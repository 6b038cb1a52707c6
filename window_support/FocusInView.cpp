#include "window_support/FocusInView.h"

#include <QApplication>
#include <QScrollArea>

namespace tallyfold {

namespace {

void showFocus(QWidget *focus)
{
    // What is clicked is in sight, and must not move away from under the pointer.
    if (!focus || QApplication::mouseButtons() != Qt::NoButton) {
        return;
    }
    for (QWidget *ancestor = focus->parentWidget(); ancestor; ancestor = ancestor->parentWidget()) {
        auto *area = qobject_cast<QScrollArea *>(ancestor);
        if (area && area->widget()) {
            area->ensureWidgetVisible(focus); // Which passes over what is beside that widget.
        }
    }
}

} // namespace

FocusInView::FocusInView(QObject *parent) : QObject(parent)
{
    connect(qApp, &QApplication::focusChanged, this, [](QWidget *, QWidget *now) { showFocus(now); });
}

} // namespace tallyfold
