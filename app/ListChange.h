#pragma once

#include <QString>
#include <QUndoCommand>

#include <functional>
#include <utility>

namespace tallyfold {

/// A change of a list that was made already, as an undoable step: undoing and redoing both put back the list
/// that was there before, in turns, without limit.
class ListChange final : public QUndoCommand {
public:
    /// `swap` puts the list it holds in the place of the current one and holds that from then on.
    ListChange(const QString &actionName, std::function<void()> swap);

    void undo() override;
    void redo() override;

private:
    std::function<void()> m_swap;
    bool m_isDone = true; ///< The first redo comes from the undo stack taking the change in.
};

} // namespace tallyfold
