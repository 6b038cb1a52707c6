#pragma once

#include "window_support/WindowReader.h"

#include <QUndoStack>

#include <functional>

namespace tallyfold {

/// A widget that shows nothing and tells the undo stack of the window it is in: the one that is the window's
/// child, null when there is none.
class WindowUndoManagerReader final : public QWidget {
    Q_OBJECT
public:
    explicit WindowUndoManagerReader(std::function<void(QUndoStack *)> found, QWidget *parent = nullptr);

private:
    WindowReader m_reader;
};

} // namespace tallyfold
