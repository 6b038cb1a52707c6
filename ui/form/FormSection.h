#pragma once

#include "core/StampSettings.h"
#include "ui/Environment.h"
#include "ui/controls/CollapsibleSection.h"
#include "ui/controls/Picker.h"
#include "ui/controls/PositionGrid.h"
#include "ui/controls/TextField.h"
#include "ui/controls/Warning.h"
#include "ui/text/FormWarnings.h"

#include <QCheckBox>

#include <functional>
#include <optional>
#include <vector>

namespace tallyfold {

/// A section of the form. Its controls show the settings of the model and change them immediately.
class FormSection : public CollapsibleSection {
    Q_OBJECT
public:
    /// `key` is the name of the section in the window state, which stores whether it is open.
    FormSection(const Environment &environment, std::int64_t number, const QString &title,
                const QString &footer, const QString &key);

protected:
    [[nodiscard]] const Environment &environment() const;
    [[nodiscard]] const StampSettings &stamp() const;

    /// Changes the stamp settings of the model.
    void edit(const std::function<void(StampSettings &)> &change);

    /// Calls `show` now and whenever the settings change.
    void follow(std::function<void()> show);

    /// Binds `control` to a text of the settings. `text` reads it and `take` writes input; the control is not
    /// updated while it shows what the user is typing.
    void bind(TextField *control, const std::function<QString(const StampSettings &)> &text,
              const std::function<void(const QString &)> &take);
    /// As above for the text in `field`.
    void bind(TextField *control, QString StampSettings::*field);

    // Rows with a control that is bound to a field of the stamp settings; `name` is its object name.

    TextField *addText(const QString &title, const char *name, QString StampSettings::*field,
                       const QString &prompt = {});
    PositionGrid *makeGrid(const QString &title, const char *name, StampPosition StampSettings::*field);
    QCheckBox *addToggle(const QString &title, const char *name, bool StampSettings::*field);

    /// A picker of the cases in `keys`, with the titles from `titleOf`.
    template <typename Case, std::size_t count>
    Picker *addPicker(const QString &title, const char *name, Case StampSettings::*field,
                      const std::array<StoredCase<Case>, count> &keys)
    {
        auto *picker = makePicker(title, name);
        for (const StoredCase<Case> &stored : keys) {
            picker->add(titleOf(stored.value), static_cast<int>(stored.value));
        }
        connect(picker, &Picker::picked, this, [this, field](const QVariant &value) {
            edit([&](StampSettings &settings) { settings.*field = static_cast<Case>(value.toInt()); });
        });
        follow([this, picker, field] { picker->setDisplayedValue(static_cast<int>(stamp().*field)); });
        return picker;
    }
    Picker *makePicker(const QString &title, const char *name);

    /// A row with a warning, shown while `warning` returns one for the plan.
    void addWarning(const char *name,
                    std::optional<FormWarning> (*warning)(const ProductionPlan &, const StampSettings &));

private:
    Environment m_environment;
};

} // namespace tallyfold
