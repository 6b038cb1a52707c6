#pragma once

#include "ui/controls/SymbolLabel.h"

#include <QPushButton>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

namespace tallyfold {

/// A warning with an optional button that resolves it.
class Warning final : public QWidget {
    Q_OBJECT
public:
    /// The title of the button and its action.
    struct Action {
        QString title;
        std::function<void()> run;
    };

    explicit Warning(QWidget *parent = nullptr);

    void setText(const QString &text);
    void setAction(const std::optional<Action> &action);

    [[nodiscard]] QString text() const;
    /// The button; hidden when there is no action.
    [[nodiscard]] QPushButton *button() const;

private:
    SymbolLabel *m_label;
    QPushButton *m_button;
    std::function<void()> m_run;
};

} // namespace tallyfold
