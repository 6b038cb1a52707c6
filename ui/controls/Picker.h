#pragma once

#include <QComboBox>

namespace tallyfold {

/// A choice among a few titles. A value that is none of them shows nothing chosen.
class Picker final : public QComboBox {
    Q_OBJECT
public:
    explicit Picker(QWidget *parent = nullptr);

    /// Adds a choice that stands for `value`.
    void add(const QString &title, const QVariant &value);
    /// Shows the choice of `value`, without telling of it.
    void setDisplayedValue(const QVariant &value);

Q_SIGNALS:
    /// The user chose.
    void picked(const QVariant &value);

protected:
    void wheelEvent(QWheelEvent *event) override;
};

} // namespace tallyfold
