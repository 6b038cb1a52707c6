#include "ui/controls/ColorWell.h"
#include "ui/controls/Stepper.h"
#include "ui/form/Sections.h"
#include "ui/text/Titles.h"
#include "ui/text/Words.h"

namespace tallyfold {

namespace {

constexpr double marginStep = 3;   // Points.
constexpr double fontSizeStep = 1; // Points.

} // namespace

PlacementSection::PlacementSection(const Environment &environment)
    : FormSection(environment, 2, words(QT_TRANSLATE_NOOP("Words", "Placement and look")), {},
                  QStringLiteral("placement"))
{
    const QString title = words(QT_TRANSLATE_NOOP("Words", "Bates number"));
    card().addStacked(title, makeGrid(title, "batesPosition", &StampSettings::batesPosition));
    addMeasures();
    addColor();
    QCheckBox *box = addToggle(words(QT_TRANSLATE_NOOP("Words", "White box behind the stamp")), "background",
                               &StampSettings::background);
    box->setToolTip(words(
        QT_TRANSLATE_NOOP("Words", "Off: the stamp is drawn on a transparent background, over the page")));
    addWarning("earlierNumberWarning", earlierNumberWarning);
}

void PlacementSection::addMeasures()
{
    const auto stepper = [this](const char *name, const ClosedRange<double> &range, double step,
                                QString (*wording)(double), double StampSettings::*field) {
        auto *made = new Stepper(range.lowest, range.highest, step, wording);
        made->setObjectName(QLatin1String(name));
        connect(made, &QDoubleSpinBox::valueChanged, this, [this, field](double value) {
            edit([&](StampSettings &settings) { settings.*field = value; });
        });
        follow([this, made, field] { made->setDisplayedValue(stamp().*field); });
        return made;
    };
    card().addRow(
        words(QT_TRANSLATE_NOOP("Words", "Margin")),
        stepper("margin", StampSettings::marginRange, marginStep, marginText, &StampSettings::margin));
    addFont();
    card().addRow(words(QT_TRANSLATE_NOOP("Words", "Size")),
                  stepper("fontSize", StampSettings::fontSizeRange, fontSizeStep, fontSizeText,
                          &StampSettings::fontSize));
}

void PlacementSection::addFont()
{
    auto *picker = new Picker;
    picker->setObjectName(QStringLiteral("fontName"));
    card().addRow(words(QT_TRANSLATE_NOOP("Words", "Font")), picker);
    for (const FontChoice &choice : fontChoices) {
        picker->add(QString::fromLatin1(choice.title), QString::fromLatin1(choice.name));
    }
    connect(picker, &Picker::picked, this, [this](const QVariant &name) {
        edit([&](StampSettings &settings) { settings.fontName = name.toString(); });
    });
    follow([this, picker] { picker->setDisplayedValue(stamp().fontName); });
}

void PlacementSection::addColor()
{
    auto *well = new ColorWell;
    well->setObjectName(QStringLiteral("color"));
    card().addRow(words(QT_TRANSLATE_NOOP("Words", "Color")), well);
    connect(well, &ColorWell::picked, this, [this](const StampColor &color) {
        edit([&](StampSettings &settings) { settings.color = color; });
    });
    follow([this, well] { well->setDisplayedValue(stamp().color); });
}

} // namespace tallyfold
