#include "ui/form/FormSection.h"

#include "core/NormalizedSettings.h"

#include <QScopedValueRollback>

#include <memory>
#include <utility>

namespace tallyfold {

FormSection::FormSection(const Environment &environment, std::int64_t number, const QString &title,
                         const QString &footer, const QString &key)
    : CollapsibleSection(number, title, footer), m_environment(environment)
{
    setObjectName(key);
    const QString stateKey = QStringLiteral("section/") + key;
    setExpanded(environment.windowState.flag(stateKey, true));
    connect(this, &CollapsibleSection::expandedChanged, this,
            [this, stateKey](bool isExpanded) { m_environment.windowState.setFlag(stateKey, isExpanded); });
}

const Environment &FormSection::environment() const
{
    return m_environment;
}

const StampSettings &FormSection::stamp() const
{
    return m_environment.model.settings().stamp;
}

void FormSection::edit(const std::function<void(StampSettings &)> &change)
{
    StampSettings settings = stamp();
    change(settings);
    m_environment.model.setStamp(settings);
}

void FormSection::follow(std::function<void()> show)
{
    show();
    connect(&m_environment.model, &AppModel::settingsChanged, this, std::move(show));
}

TextField *FormSection::addText(const QString &title, const char *name, QString StampSettings::*field,
                                const QString &prompt)
{
    auto *control = new TextField(prompt);
    control->setObjectName(QLatin1String(name));
    card().addRow(title, control);
    bind(control, field);
    return control;
}

void FormSection::bind(TextField *control, const std::function<QString(const StampSettings &)> &text,
                       const std::function<void(const QString &)> &take)
{
    const auto isTyping = std::make_shared<bool>(false);
    connect(control, &QLineEdit::textEdited, this, [take, isTyping](const QString &typed) {
        const QScopedValueRollback typing(*isTyping, true);
        take(typed);
    });
    const auto showUsed = [this, control, text] { control->setDisplayedText(text(stamp().normalized())); };
    follow([isTyping, showUsed] {
        if (!*isTyping) {
            showUsed();
        }
    });
    connect(control, &QLineEdit::editingFinished, this, showUsed);
}

void FormSection::bind(TextField *control, QString StampSettings::*field)
{
    bind(
        control, [field](const StampSettings &settings) { return settings.*field; },
        [this, field](const QString &text) {
            edit([&](StampSettings &settings) { settings.*field = text; });
        });
}

PositionGrid *FormSection::makeGrid(const QString &title, const char *name,
                                    StampPosition StampSettings::*field)
{
    auto *grid = new PositionGrid(title);
    grid->setObjectName(QLatin1String(name));
    connect(grid, &PositionGrid::selected, this, [this, field](StampPosition position) {
        edit([&](StampSettings &settings) { settings.*field = position; });
    });
    follow([this, grid, field] { grid->setSelection(stamp().*field); });
    return grid;
}

QCheckBox *FormSection::addToggle(const QString &title, const char *name, bool StampSettings::*field)
{
    auto *toggle = new QCheckBox(title);
    toggle->setObjectName(QLatin1String(name));
    card().addWide(toggle);
    connect(toggle, &QCheckBox::clicked, this,
            [this, field](bool isOn) { edit([&](StampSettings &settings) { settings.*field = isOn; }); });
    follow([this, toggle, field] { toggle->setChecked(stamp().*field); });
    return toggle;
}

Picker *FormSection::makePicker(const QString &title, const char *name)
{
    auto *picker = new Picker;
    picker->setObjectName(QLatin1String(name));
    card().addStacked(title, picker);
    return picker;
}

void FormSection::addWarning(const char *name, std::optional<FormWarning> (*warning)(const ProductionPlan &,
                                                                                     const StampSettings &))
{
    auto *view = new Warning;
    view->setObjectName(QLatin1String(name));
    QWidget *row = card().addWide(view);
    const auto show = [this, view, row, warning] {
        const std::optional<FormWarning> shown = warning(*m_environment.plan, stamp());
        row->setVisible(shown.has_value());
        setSign(shown ? std::optional(SectionSign{QStringLiteral("exclamationmark.triangle.fill"),
                                                  Tone::warning, shown->text})
                      : std::nullopt);
        if (shown) {
            view->setText(shown->text);
            view->setAction(Warning::Action{shown->action, [this, mend = shown->mend] { edit(mend); }});
        }
    };
    show();
    connect(&m_environment.plan, &CurrentPlan::changed, this, show);
}

} // namespace tallyfold
