#include "ui/controls/TextField.h"

#include "ui/theme/Spacing.h"

#include <QKeyEvent>

namespace tallyfold {

TextField::TextField(const QString &prompt, QWidget *parent) : QLineEdit(parent)
{
    setPlaceholderText(prompt);
    setTextMargins(spacing::tight, 0, spacing::tight, 0);
    setMinimumWidth(100);
}

void TextField::setDisplayedText(const QString &text)
{
    if (text != this->text()) {
        setText(text);
    }
}

bool TextField::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        // If there is no input to undo, the shortcut undoes the last change of the list.
        const bool isIdle = (key->matches(QKeySequence::Undo) && !isUndoAvailable()) ||
                            (key->matches(QKeySequence::Redo) && !isRedoAvailable());
        if (isIdle) {
            event->ignore();
            return true;
        }
    }
    return QLineEdit::event(event);
}

} // namespace tallyfold
