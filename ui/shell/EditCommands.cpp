#include "ui/shell/EditCommands.h"

#include "ui/list/FileListView.h"
#include "ui/text/Words.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMetaObject>
#include <QMimeData>

#include <utility>

namespace tallyfold {

namespace {

/// A menu opened with the keyboard takes the focus; its commands act on the widget focused before.
bool isMenu(const QWidget *widget)
{
    return qobject_cast<const QMenuBar *>(widget) || qobject_cast<const QMenu *>(widget);
}

/// "Undo" with the name of the command.
QString named(const QString &command, const QString &action)
{
    return action.isEmpty() ? command : command + QLatin1Char(' ') + action;
}

} // namespace

EditCommands::EditCommands(QUndoStack &undo, std::function<void()> remove, QObject *parent)
    : QObject(parent),
      m_undoStack(&undo),
      m_remove(std::move(remove)),
      m_undo(add(QT_TRANSLATE_NOOP("Words", "Undo"), QKeySequence::Undo, [this] { this->undo(); })),
      m_redo(add(QT_TRANSLATE_NOOP("Words", "Redo"), QKeySequence::Redo, [this] { this->redo(); })),
      m_cut(add(QT_TRANSLATE_NOOP("Words", "Cut"), QKeySequence::Cut, [this] { send("cut"); })),
      m_copy(add(QT_TRANSLATE_NOOP("Words", "Copy"), QKeySequence::Copy, [this] { send("copy"); })),
      m_paste(add(QT_TRANSLATE_NOOP("Words", "Paste"), QKeySequence::Paste, [this] { send("paste"); })),
      m_delete(add(QT_TRANSLATE_NOOP("Words", "Delete"), QKeySequence::Delete,
                   [this] {
                       if (QLineEdit *field = target<QLineEdit>()) {
                           field->del();
                       } else {
                           m_remove();
                       }
                   })),
      m_selectAll(add(QT_TRANSLATE_NOOP("Words", "Select All"), QKeySequence::SelectAll,
                      [this] { send("selectAll"); }))
{
    connect(m_undoStack, &QUndoStack::indexChanged, this, &EditCommands::update);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (!isMenu(now)) {
            m_target = now;
        }
        update();
    });
    m_target = QApplication::focusWidget();
    update();
}

template <typename Widget> Widget *EditCommands::target() const
{
    return qobject_cast<Widget *>(m_target.data());
}

QAction *EditCommands::add(const char *title, const QKeySequence &keys, std::function<void()> run)
{
    auto *action = new QAction(words(title), this);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
    return action;
}

void EditCommands::addTo(QMenu &menu)
{
    menu.addActions({m_undo, m_redo});
    menu.addSeparator();
    menu.addActions({m_cut, m_copy, m_paste, m_delete, m_selectAll});
    connect(&menu, &QMenu::aboutToShow, this, &EditCommands::update);
    // Actions disabled for an earlier focus must not block its shortcuts later.
    connect(&menu, &QMenu::aboutToHide, this, &EditCommands::update);
}

void EditCommands::undo()
{
    QLineEdit *field = target<QLineEdit>();
    if (field && field->isUndoAvailable()) {
        field->undo();
    } else {
        m_undoStack->undo();
    }
}

void EditCommands::redo()
{
    QLineEdit *field = target<QLineEdit>();
    if (field && field->isRedoAvailable()) {
        field->redo();
    } else {
        m_undoStack->redo();
    }
}

void EditCommands::send(const char *slot)
{
    if (const QLabel *label = target<QLabel>()) {
        if (qstrcmp(slot, "copy") == 0) {
            QApplication::clipboard()->setText(label->selectedText());
        }
        return;
    }
    if (m_target) {
        QMetaObject::invokeMethod(m_target, slot);
    }
}

void EditCommands::update()
{
    const QLineEdit *field = target<QLineEdit>();
    const FileListView *list = target<FileListView>();
    const QLabel *label = target<QLabel>();
    const bool isTypingUndoable = field && field->isUndoAvailable();
    const bool isTypingRedoable = field && field->isRedoAvailable();
    const QString typing = words(QT_TRANSLATE_NOOP("Words", "Typing"));
    m_undo->setEnabled(isTypingUndoable || m_undoStack->canUndo());
    m_undo->setText(named(words("Undo"), isTypingUndoable ? typing : m_undoStack->undoText()));
    m_redo->setEnabled(isTypingRedoable || m_undoStack->canRedo());
    m_redo->setText(named(words("Redo"), isTypingRedoable ? typing : m_undoStack->redoText()));
    const bool hasSelectedText = (field && field->hasSelectedText()) || (label && label->hasSelectedText());
    const QMimeData *clip = QApplication::clipboard()->mimeData();
    m_cut->setEnabled(field && field->hasSelectedText());
    // The selection of the list changes without notice; the commands do nothing if it is empty.
    m_copy->setEnabled(hasSelectedText || list);
    m_paste->setEnabled((field && clip && clip->hasText()) || list);
    m_selectAll->setEnabled(field || list);
    m_delete->setEnabled(field || list);
}

} // namespace tallyfold
