#include "ui/controls/Stepper.h"

#include <QLocale>
#include <QRegularExpression>
#include <QWheelEvent>

#include <optional>
#include <utility>

namespace tallyfold {

namespace {

/// The number that `text` begins with, as the user's language or C writes it.
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
    setDecimals(2); // A stored value is shown in whole numbers, and stays what it is until it is changed.
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
        return value(); // Nothing was typed: the text may stand for more than it shows.
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
        event->ignore(); // The wheel scrolls the form, and must not change what it passes over.
    }
}

} // namespace tallyfold
