#pragma once

#include "ui/controls/StyledLabel.h"

#include <QWidget>

namespace tallyfold {

/// What a pane shows while it has nothing to show: a large symbol, a title, a description, and perhaps
/// buttons under them.
class EmptyState final : public QWidget {
    Q_OBJECT
public:
    EmptyState(const QString &symbol, const QString &title, const QString &description,
               QWidget *buttons = nullptr, QWidget *parent = nullptr);
    /// The same with labels for title and description, which it takes over.
    EmptyState(const QString &symbol, StyledLabel *title, StyledLabel *description,
               QWidget *buttons = nullptr, QWidget *parent = nullptr);
};

} // namespace tallyfold
