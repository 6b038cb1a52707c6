#pragma once

#include "ui/Environment.h"

#include <QScrollArea>

namespace tallyfold {

/// The settings of stamp and production in five sections, below the notice about password-protected files.
class StampForm final : public QScrollArea {
    Q_OBJECT
public:
    explicit StampForm(const Environment &environment, QWidget *parent = nullptr);

    /// Opens the section `name`, scrolls to it and gives it the focus.
    void showSection(const QString &name);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void fitWidth();
};

} // namespace tallyfold
