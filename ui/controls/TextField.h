#pragma once

#include <QLineEdit>

namespace tallyfold {

/// A line edit that keeps its cursor while the model follows the input.
class TextField final : public QLineEdit {
    Q_OBJECT
public:
    explicit TextField(const QString &prompt = {}, QWidget *parent = nullptr);

    /// Shows `text` unless it is shown already.
    void setDisplayedText(const QString &text);

protected:
    bool event(QEvent *event) override;
};

} // namespace tallyfold
