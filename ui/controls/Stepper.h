#pragma once

#include <QDoubleSpinBox>

#include <functional>

namespace tallyfold {

/// A number with its unit, between limits, that goes up and down in steps. What is typed may leave the unit
/// out.
class Stepper final : public QDoubleSpinBox {
    Q_OBJECT
public:
    /// What the stepper shows for a value.
    using Wording = std::function<QString(double)>;

    Stepper(double lowest, double highest, double step, Wording wording, QWidget *parent = nullptr);

    /// Shows `value` without telling of it.
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
