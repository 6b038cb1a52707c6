#include "core/NormalizedSettings.h"
#include "ui/controls/Stepper.h"
#include "ui/controls/StyledLabel.h"
#include "ui/form/Sections.h"
#include "ui/text/Words.h"

namespace tallyfold {

namespace {

/// The integer in `text`, in the user's locale.
std::optional<std::int64_t> wholeNumber(const QString &text)
{
    bool isNumber = false;
    const qlonglong number = QLocale().toLongLong(text.trimmed(), &isNumber);
    return isNumber ? std::optional<std::int64_t>(number) : std::nullopt;
}

} // namespace

NumberingSection::NumberingSection(const Environment &environment)
    : FormSection(
          environment, 1, words(QT_TRANSLATE_NOOP("Words", "Numbering")),
          words(QT_TRANSLATE_NOOP("Words", "Numbers continue from file to file in production order.")),
          QStringLiteral("numbering"))
{
    addText(words(QT_TRANSLATE_NOOP("Words", "Prefix")), "prefix", &StampSettings::prefix,
            QStringLiteral("ABC"));
    addStartNumber();
    addDigits();
    addText(words(QT_TRANSLATE_NOOP("Words", "Suffix (optional)")), "suffix", &StampSettings::suffix);
    addFirstNumber();
    addWarning("digitsWarning", digitsWarning);
}

void NumberingSection::addStartNumber()
{
    auto *field = new TextField;
    field->setObjectName(QStringLiteral("startNumber"));
    field->setInputMethodHints(Qt::ImhDigitsOnly);
    card().addRow(words(QT_TRANSLATE_NOOP("Words", "Start number")), field);
    bind(
        field, [](const StampSettings &settings) { return QString::number(settings.startNumber); },
        [this](const QString &text) {
            if (const std::optional<std::int64_t> number = wholeNumber(text)) {
                edit([&](StampSettings &settings) { settings.startNumber = *number; });
            }
        });
}

void NumberingSection::addDigits()
{
    auto *stepper = new Stepper(static_cast<double>(StampSettings::digitRange.lowest),
                                static_cast<double>(StampSettings::digitRange.highest), 1,
                                [](double value) { return QString::number(qRound(value)); });
    stepper->setObjectName(QStringLiteral("digits"));
    card().addRow(words(QT_TRANSLATE_NOOP("Words", "Digits")), stepper);
    connect(stepper, &QDoubleSpinBox::valueChanged, this, [this](double value) {
        edit([&](StampSettings &settings) { settings.digits = qRound(value); });
    });
    follow([this, stepper] { stepper->setDisplayedValue(static_cast<double>(stamp().digits)); });
}

void NumberingSection::addFirstNumber()
{
    auto *number = new StyledLabel(TextStyle::headline);
    number->setObjectName(QStringLiteral("firstNumber"));
    number->setTabularDigits();
    number->setSelectable();
    number->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    card().addRow(words(QT_TRANSLATE_NOOP("Words", "First number")), number);
    follow([this, number] {
        const StampSettings settings = stamp().normalized();
        number->setText(settings.bates(settings.startNumber));
        number->setAccessibleName(words("First number") + QStringLiteral(": ") + number->text());
    });
}

} // namespace tallyfold
