#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QUndoStack>

#include <functional>

namespace tallyfold {

/// The commands of the Edit menu. They act on the focused widget, a text or the list of files. Undo and Redo
/// act on the list if the text has nothing to undo or redo.
class EditCommands final : public QObject {
    Q_OBJECT
public:
    /// `remove` removes the selected files from the list.
    EditCommands(QUndoStack &undo, std::function<void()> remove, QObject *parent = nullptr);

    void addTo(QMenu &menu);

    /// Updates which commands are enabled.
    void update();

private:
    QAction *add(const char *title, const QKeySequence &keys, std::function<void()> run);
    void undo();
    void redo();
    void send(const char *slot);
    /// The focused widget, or the one focused before a menu was opened; null if it is not a `Widget`.
    template <typename Widget> [[nodiscard]] Widget *target() const;

    QUndoStack *m_undoStack;
    std::function<void()> m_remove;
    QPointer<QWidget> m_target;
    QAction *m_undo;
    QAction *m_redo;
    QAction *m_cut;
    QAction *m_copy;
    QAction *m_paste;
    QAction *m_delete;
    QAction *m_selectAll;
};

} // namespace tallyfold
