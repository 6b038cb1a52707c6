#pragma once

#include <QComboBox>

namespace tallyfold {

/// A choice among a few titles. For an unknown value nothing is selected.
class Picker final : public QComboBox {
    Q_OBJECT
public:
    explicit Picker(QWidget *parent = nullptr);

    /// Adds a choice with the value `value`.
    void add(const QString &title, const QVariant &value);
    /// Shows the choice with `value` without emitting a signal.
    void setDisplayedValue(const QVariant &value);

Q_SIGNALS:
    /// The user made a choice.
    void picked(const QVariant &value);

protected:
    void wheelEvent(QWheelEvent *event) override;
};

} // namespace tallyfold
