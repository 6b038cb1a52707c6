#pragma once

#include "ui/Environment.h"

#include <QObject>
#include <QWidget>

namespace tallyfold {

/// Sets the accessible role and description of the pictures in a preview pane: that they are pictures, and
/// the text of the stamp on each.
class SpokenPreview final : public QObject {
    Q_OBJECT
public:
    /// For the pictures in `pane`, which owns this: "closeUp", "page1" and so on.
    SpokenPreview(const Environment &environment, QWidget &pane);

private:
    void describe();

    Environment m_environment;
    QWidget *m_pane;
};

} // namespace tallyfold
