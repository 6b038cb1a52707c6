#include "app/ListChange.h"

namespace tallyfold {

ListChange::ListChange(const QString &actionName, std::function<void()> swap)
    : QUndoCommand(actionName), m_swap(std::move(swap))
{
}

void ListChange::undo()
{
    m_swap();
    m_isDone = false;
}

void ListChange::redo()
{
    if (!m_isDone) {
        m_swap();
    }
    m_isDone = true;
}

} // namespace tallyfold
