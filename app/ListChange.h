#pragma once

#include <QString>
#include <QUndoCommand>

#include <functional>
#include <utility>

namespace tallyfold {

/// A change of the list that has been made already, as an undo command: both undo and redo exchange the
/// current list for the other one.
class ListChange final : public QUndoCommand {
public:
    /// `swap` exchanges the list that it holds for the current one.
    ListChange(const QString &actionName, std::function<void()> swap);

    void undo() override;
    void redo() override;

private:
    std::function<void()> m_swap;
    bool m_isDone = true; ///< QUndoStack::push calls redo for a change that is made already.
};

} // namespace tallyfold
