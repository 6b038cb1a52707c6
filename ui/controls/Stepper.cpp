#include "ui/controls/Stepper.h"

#include <QLocale>
#include <QRegularExpression>
#include <QWheelEvent>

#include <optional>
#include <utility>

namespace tallyfold {

namespace {

/// The number at the start of `text`, in the user's locale or the C locale.
std::optional<double> leadingNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^\\s*([+-]?[\\d.,]+)"));
    const QString digits = number.match(text).captured(1);
    bool isNumber = false;
    double value = QLocale().toDouble(digits, &isNumber);
    if (!isNumber) {
        value = QLocale::c().toDouble(digits, &isNumber);
    }
    return isNumber ? std::optional(value) : std::nullopt;
}

} // namespace

Stepper::Stepper(double lowest, double highest, double step, Wording wording, QWidget *parent)
    : QDoubleSpinBox(parent), m_wording(std::move(wording))
{
    setDecimals(2); // The text shows whole numbers, but a stored value is kept until the user changes it.
    setRange(lowest, highest);
    setSingleStep(step);
    setKeyboardTracking(false);
    setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Stepper::setDisplayedValue(double value)
{
    if (value != this->value()) {
        const QSignalBlocker quiet(this);
        setValue(value);
    }
}

QString Stepper::textFromValue(double value) const
{
    return m_wording(value);
}

double Stepper::valueFromText(const QString &text) const
{
    if (text == m_wording(value())) {
        return value(); // Nothing was typed: the value may be more precise than the text.
    }
    return qBound(minimum(), leadingNumber(text).value_or(value()), maximum());
}

QValidator::State Stepper::validate(QString &text, int &) const
{
    return leadingNumber(text) ? QValidator::Acceptable : QValidator::Intermediate;
}

void Stepper::wheelEvent(QWheelEvent *event)
{
    if (hasFocus()) {
        QDoubleSpinBox::wheelEvent(event);
    } else {
        event->ignore(); // The wheel scrolls the form and must not change controls under the pointer.
    }
}

} // namespace tallyfold
