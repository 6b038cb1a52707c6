#pragma once

#include "ui/sheets/SheetDialog.h"

#include <QList>
#include <QString>
#include <QVBoxLayout>

#include <functional>

namespace tallyfold {

/// A message that has to be answered, over its window. Its buttons stand in the order of the desktop.
class Alert final : public SheetDialog {
    Q_OBJECT
public:
    /// What a button is for.
    enum class Role {
        normal,
        prominent, ///< Return presses it.
        cancel,    ///< Escape presses it.
    };
    struct Button {
        QString title;
        Role role = Role::normal;
        std::function<void()> run = [] {};
    };

    /// An alert that can be dismissed with Escape only when one of `buttons` cancels, or when there is only
    /// one.
    Alert(const QString &title, const QString &text, const QList<Button> &buttons, QWidget *parent);

    /// Adds `widget` between the text and the buttons.
    void addContent(QWidget *widget);

    void reject() override;

private:
    void press(const Button &button);

    QList<Button> m_buttons;
    QVBoxLayout *m_content;
};

} // namespace tallyfold
