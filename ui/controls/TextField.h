#pragma once

#include <QLineEdit>

namespace tallyfold {

/// A line of text that keeps its cursor while the model follows what is typed.
class TextField final : public QLineEdit {
    Q_OBJECT
public:
    explicit TextField(const QString &prompt = {}, QWidget *parent = nullptr);

    /// Shows `text` unless it stands there already.
    void setDisplayedText(const QString &text);

protected:
    bool event(QEvent *event) override;
};

} // namespace tallyfold
