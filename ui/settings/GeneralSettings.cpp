#include "ui/settings/GeneralSettings.h"

#include "app/RunMessages.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>
#include <QPushButton>

#include <memory>

namespace tallyfold {

namespace {

QLabel *headingOf(const QString &title)
{
    return new StyledLabel(title, TextStyle::headline);
}

} // namespace

GeneralSettings::GeneralSettings(const Environment &environment, QWidget *parent)
    : QWidget(parent), m_environment(environment), m_presets(new QVBoxLayout)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::section, spacing::section, spacing::section, spacing::section);
    layout->setSpacing(spacing::normal);
    addGettingStarted(*layout);
    layout->addSpacing(spacing::normal);
    layout->addWidget(headingOf(words(QT_TRANSLATE_NOOP("Words", "Your presets"))));
    m_presets->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(m_presets);
    layout->addSpacing(spacing::normal);
    layout->addWidget(headingOf(words(QT_TRANSLATE_NOOP("Words", "Your data"))));
    auto *kept = new Card;
    kept->addWide(new StyledLabel(
        words(QT_TRANSLATE_NOOP("Words",
                                "%1 keeps only your settings and presets, in its preferences on this "
                                "Mac. Your PDFs are read where they are and nothing is uploaded."))
            .arg(displayedName()),
        TextStyle::body));
    layout->addWidget(kept);
    layout->addStretch(1);
    connect(&environment.model, &AppModel::settingsChanged, this, &GeneralSettings::showPresets);
    showPresets();
}

void GeneralSettings::addGettingStarted(QVBoxLayout &layout)
{
    auto *button = new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Show the Welcome Screen Again")));
    button->setObjectName(QStringLiteral("showWelcome"));
    button->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(button, &QPushButton::clicked, this, [this] {
        AppSettings settings = m_environment.model.settings();
        settings.onboardingDone = false;
        m_environment.model.setSettings(settings);
        m_environment.openWindow(WindowId::main);
        m_environment.model.setSheet(Sheet::welcome);
    });
    auto *card = new Card;
    card->addWide(button);
    layout.addWidget(headingOf(words(QT_TRANSLATE_NOOP("Words", "Getting started"))));
    layout.addWidget(card);
}

QWidget *GeneralSettings::rowOf(const Preset &preset)
{
    auto *row = new QWidget;
    auto *name = new ElidedLabel(preset.name, TextStyle::body);
    name->setObjectName(QStringLiteral("presetName"));
    const auto button = [&](const QString &title, const char *objectName, auto run) {
        auto *made = new QPushButton(title);
        made->setObjectName(QLatin1String(objectName));
        made->setAccessibleName(title + QStringLiteral(": ") + preset.name);
        // Deferred: a change of the presets rebuilds these rows, which must not happen while one of their
        // buttons is pressed.
        connect(made, &QPushButton::clicked, this, run, Qt::QueuedConnection);
        return made;
    };
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::normal);
    layout->addWidget(name, 1);
    layout->addWidget(button(words(QT_TRANSLATE_NOOP("Words", "Apply")), "applyPreset",
                             [this, preset] { m_environment.model.applyPresetUndoably(preset); }));
    layout->addWidget(button(words(QT_TRANSLATE_NOOP("Words", "Delete")), "deletePreset",
                             [this, id = preset.id] { m_environment.model.deletePreset(id); }));
    return row;
}

void GeneralSettings::showPresets()
{
    const std::vector<Preset> &presets = m_environment.model.settings().presets;
    if (m_presets->count() > 0 && presets == m_shown) {
        return;
    }
    m_shown = presets;
    if (m_presets->count() > 0) {
        const std::unique_ptr<QLayoutItem> shown(m_presets->takeAt(0));
        delete shown->widget();
    }
    auto *card = new Card;
    for (const Preset &preset : presets) {
        card->addWide(rowOf(preset));
    }
    if (presets.empty()) {
        auto *none =
            new StyledLabel(words(QT_TRANSLATE_NOOP(
                                "Words", "No presets saved yet. Choose Presets › Save Current Settings as "
                                         "Preset… in the main window to save one.")),
                            TextStyle::body, Tone::secondary);
        none->setObjectName(QStringLiteral("noPresets"));
        card->addWide(none);
    }
    m_presets->addWidget(card);
}

} // namespace tallyfold
