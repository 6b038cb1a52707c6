#pragma once

#include "ui/Environment.h"

#include <QScrollArea>

namespace tallyfold {

/// The settings of the stamp and the production, in five sections, with the notice about password-protected
/// files above them.
class StampForm final : public QScrollArea {
    Q_OBJECT
public:
    explicit StampForm(const Environment &environment, QWidget *parent = nullptr);

    /// Opens the section called `name`, scrolls to it, and gives it the focus.
    void showSection(const QString &name);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void fitWidth();
};

} // namespace tallyfold
