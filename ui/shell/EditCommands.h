#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QUndoStack>

#include <functional>

namespace tallyfold {

/// The commands of the Edit menu. They act on what has the focus: a text that is typed, or the list of files;
/// Undo and Redo go to the list's changes when there is nothing typed to take back.
class EditCommands final : public QObject {
    Q_OBJECT
public:
    /// `remove` takes the chosen files out of the list.
    EditCommands(QUndoStack &undo, std::function<void()> remove, QObject *parent = nullptr);

    void addTo(QMenu &menu);

    /// Finds out anew what can be done now.
    void update();

private:
    QAction *add(const char *title, const QKeySequence &keys, std::function<void()> run);
    void undo();
    void redo();
    void send(const char *slot);
    /// What has the focus, or had it before a menu did, if it is a `Widget`.
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
