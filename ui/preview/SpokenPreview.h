#pragma once

#include "ui/Environment.h"

#include <QObject>
#include <QWidget>

namespace tallyfold {

/// Makes the pictures of a preview pane say what they show to those who do not see them: that they are
/// pictures, and what the stamp on each reads.
class SpokenPreview final : public QObject {
    Q_OBJECT
public:
    /// For the pictures in `pane`, which owns this: "closeUp", and "page1" and those that follow.
    SpokenPreview(const Environment &environment, QWidget &pane);

private:
    void describe();

    Environment m_environment;
    QWidget *m_pane;
};

} // namespace tallyfold
