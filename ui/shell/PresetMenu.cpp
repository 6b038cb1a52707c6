#include "ui/shell/PresetMenu.h"

#include "ui/controls/LengthLimit.h"
#include "ui/controls/Mnemonics.h"
#include "ui/controls/StyledLabel.h"
#include "ui/controls/TextField.h"
#include "ui/controls/WrappedText.h"
#include "ui/sheets/Alert.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>

namespace tallyfold {

namespace {

/// A menu reads "&" as a mnemonic; in a name it is a letter.
QString plain(QString title)
{
    return title.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

PresetMenu::PresetMenu(const Environment &environment, QWidget *parent)
    : QMenu(words(QT_TRANSLATE_NOOP("Words", "Presets")), parent), m_environment(environment)
{
    setObjectName(QStringLiteral("presetMenu"));
    setToolTipsVisible(true);
    connect(&environment.model, &AppModel::settingsChanged, this, [this] {
        if (!isVisible()) {
            fill();
        }
    });
    connect(this, &QMenu::aboutToShow, this, [this] {
        fill();
        giveMnemonics(*this);
    });
    fill();
}

Alert *PresetMenu::prompt() const
{
    return m_prompt;
}

void PresetMenu::addPreset(const Preset &preset)
{
    constexpr int widestName = 320;
    const QString title = fontMetrics().elidedText(preset.name, Qt::ElideMiddle, widestName);
    QAction *const action =
        addAction(plain(title), this, [this, preset] { m_environment.model.applyPresetUndoably(preset); });
    if (title != preset.name) {
        action->setToolTip(helpTextOf(preset.name));
    }
}

void PresetMenu::fill()
{
    clear();
    addSection(words(QT_TRANSLATE_NOOP("Words", "Starting points")));
    for (const Preset &preset : AppModel::builtInPresets()) {
        addPreset(preset);
    }
    const std::vector<Preset> &saved = m_environment.model.settings().presets;
    if (!saved.empty()) {
        addSection(words(QT_TRANSLATE_NOOP("Words", "Your presets")));
        for (const Preset &preset : saved) {
            addPreset(preset);
        }
    }
    addSeparator();
    addAction(words(QT_TRANSLATE_NOOP("Words", "Save Current Settings as Preset…")), this,
              &PresetMenu::askForName);
}

void PresetMenu::askForName()
{
    auto *content = new QWidget;
    auto *field = new TextField;
    auto *label = new StyledLabel(words(QT_TRANSLATE_NOOP("Words", "Name")), TextStyle::body);
    label->setBuddy(field);
    field->setObjectName(QStringLiteral("presetName"));
    field->setAccessibleName(label->text());
    field->setValidator(new LengthLimit(Preset::maxNameLength, field));
    auto *layout = new QHBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::wide);
    layout->addWidget(label);
    layout->addWidget(field, 1);

    m_prompt = new Alert(
        words(QT_TRANSLATE_NOOP("Words", "Save Preset")),
        words(QT_TRANSLATE_NOOP("Words",
                                "Saves the numbering, look, legend and output naming. A preset with the "
                                "same name is replaced.")),
        {{words(QT_TRANSLATE_NOOP("Words", "Save")), Alert::Role::prominent,
          [this, name = QPointer<TextField>(field)] { m_environment.model.savePreset(name->text()); }},
         {words(QT_TRANSLATE_NOOP("Words", "Cancel")), Alert::Role::cancel}},
        parentWidget() ? parentWidget()->window() : nullptr);
    m_prompt->setObjectName(QStringLiteral("savePreset"));
    m_prompt->addContent(content);
    m_prompt->open();
    field->setFocus();
}

} // namespace tallyfold
