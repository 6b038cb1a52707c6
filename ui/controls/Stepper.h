#pragma once

#include <QDoubleSpinBox>

#include <functional>

namespace tallyfold {

/// A number with a unit, within limits, with buttons for single steps. The unit may be omitted in input.
class Stepper final : public QDoubleSpinBox {
    Q_OBJECT
public:
    /// The text of the stepper for a value.
    using Wording = std::function<QString(double)>;

    Stepper(double lowest, double highest, double step, Wording wording, QWidget *parent = nullptr);

    /// Shows `value` without emitting a signal.
    void setDisplayedValue(double value);

    [[nodiscard]] QString textFromValue(double value) const override;
    [[nodiscard]] double valueFromText(const QString &text) const override;
    QValidator::State validate(QString &text, int &position) const override;

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    Wording m_wording;
};

} // namespace tallyfold
