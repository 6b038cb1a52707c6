#include "window_support/WindowUndoManagerReader.h"

#include <utility>

namespace tallyfold {

WindowUndoManagerReader::WindowUndoManagerReader(std::function<void(QUndoStack *)> found, QWidget *parent)
    : QWidget(parent),
      m_reader(
          [found = std::move(found)](QWidget *window) {
              found(window->findChild<QUndoStack *>(QString(), Qt::FindDirectChildrenOnly));
          },
          this)
{
    setFixedSize(0, 0);
}

} // namespace tallyfold
