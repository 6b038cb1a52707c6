#include "ui/controls/Buttons.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/form/Sections.h"
#include "ui/text/Messages.h"
#include "ui/text/Titles.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tallyfold {

namespace {

QString lastComponent(const std::filesystem::path &folder)
{
    const std::filesystem::path name =
        folder.has_filename() ? folder.filename() : folder.parent_path().filename();
    return name.empty() ? displayPath(folder) : displayPath(name);
}

/// The parent folder as text; empty for the root.
QString placeOf(const std::filesystem::path &folder)
{
    const std::filesystem::path named = folder.has_filename() ? folder : folder.parent_path();
    return named.has_filename() ? displayPath(named.parent_path()) : QString();
}

} // namespace

OutputSection::OutputSection(const Environment &environment)
    : FormSection(
          environment, 5, words(QT_TRANSLATE_NOOP("Words", "Output")),
          words(QT_TRANSLATE_NOOP("Words", "Stamped copies go to the output folder. The originals are "
                                           "never changed, and nothing there is ever replaced.")),
          QStringLiteral("output"))
{
    addFolder();
    addProblem();
    QWidget *naming = addPicker(words(QT_TRANSLATE_NOOP("Words", "Name the copies")), "naming",
                                &StampSettings::naming, outputNamingKeys);
    leadTo(naming);
    addOption(words(QT_TRANSLATE_NOOP("Words", "Production index (CSV)")), "writeIndex",
              &AppSettings::writeIndex);
    addOption(words(QT_TRANSLATE_NOOP("Words", "Privilege log template (CSV)")), "writePrivilegeLog",
              &AppSettings::writePrivilegeLog);
}

void OutputSection::addFolder()
{
    const QString title = words(QT_TRANSLATE_NOOP("Words", "Output folder"));
    auto *content = new QWidget;
    auto *folder = new ElidedLabel(TextStyle::body);
    auto *place = new ElidedLabel(TextStyle::caption, Tone::secondary);
    auto *none =
        new StyledLabel(words(QT_TRANSLATE_NOOP("Words", "Not chosen")), TextStyle::body, Tone::secondary);
    auto *button = new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Choose…")));
    folder->setObjectName(QStringLiteral("outputFolder"));
    place->setObjectName(QStringLiteral("outputFolderPlace"));
    none->setObjectName(QStringLiteral("noOutputFolder"));
    button->setObjectName(QStringLiteral("chooseOutputFolder"));
    button->setAccessibleName(title + QStringLiteral(": ") + button->text());
    auto *layout = new QHBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::normal);
    auto *names = new QVBoxLayout;
    names->setSpacing(0);
    names->addWidget(folder);
    names->addWidget(place);
    layout->addLayout(names, 1);
    layout->addWidget(none, 1);
    layout->addWidget(button);
    content->setFocusProxy(button);
    card().addStacked(title, content);
    connect(button, &QPushButton::clicked, this, [this] { environment().model.chooseOutputFolder(); });
    const auto show = [this, folder, place, none] {
        const auto &chosen = environment().model.outputFolder();
        folder->setVisible(chosen.has_value());
        none->setVisible(!chosen);
        folder->setText(chosen ? lastComponent(*chosen) : QString());
        folder->setToolTip(chosen ? displayPath(*chosen) : QString());
        place->setText(chosen ? placeOf(*chosen) : QString());
        place->setToolTip(folder->toolTip());
        place->setVisible(!place->text().isEmpty());
    };
    show();
    connect(&environment().model, &AppModel::outputFolderChanged, this, show);
}

void OutputSection::leadTo(QWidget *naming)
{
    const auto choose = [this, naming, folder = findChild<QWidget *>(QStringLiteral("chooseOutputFolder"))] {
        const std::vector<ProductionConflict> &conflicts = environment().output.conflicts();
        const bool isOfNames =
            !conflicts.empty() && conflicts.front().kind == ProductionConflict::Kind::duplicate;
        setFocusProxy(isOfNames ? naming : folder);
    };
    choose();
    connect(&environment().output, &OutputCheck::changed, this, choose);
}

void OutputSection::addProblem()
{
    auto *label = new SymbolLabel(QStringLiteral("exclamationmark.octagon.fill"), Tone::blocking,
                                  TextStyle::callout, Tone::blocking);
    label->setObjectName(QStringLiteral("folderProblem"));
    QWidget *row = card().addWide(label);
    const auto show = [this, label, row] {
        const std::vector<ProductionConflict> &conflicts = environment().output.conflicts();
        const std::optional<QString> problem = firstMessageOf(conflicts);
        label->setText(problem.value_or(QString()));
        // The bar below the form always shows the same message; screen readers should speak it once.
        row->setVisible(problem && problem != folderMessageOf(conflicts));
        setSign(problem ? std::optional(SectionSign{QStringLiteral("exclamationmark.octagon.fill"),
                                                    Tone::blocking, *problem})
                        : std::nullopt);
    };
    show();
    connect(&environment().output, &OutputCheck::changed, this, show);
}

void OutputSection::addOption(const QString &title, const char *name, bool AppSettings::*field)
{
    auto *toggle = new QCheckBox(title);
    toggle->setObjectName(QLatin1String(name));
    card().addWide(toggle);
    connect(toggle, &QCheckBox::clicked, this, [this, field](bool isOn) {
        AppSettings settings = environment().model.settings();
        settings.*field = isOn;
        environment().model.setSettings(settings);
    });
    follow([this, toggle, field] { toggle->setChecked(environment().model.settings().*field); });
}

} // namespace tallyfold
