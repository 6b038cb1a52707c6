#pragma once

#include "ui/Environment.h"

#include <QMenu>
#include <QPointer>

namespace tallyfold {

class Alert;

/// The menu of built-in and saved presets, with a command to save another.
class PresetMenu final : public QMenu {
    Q_OBJECT
public:
    explicit PresetMenu(const Environment &environment, QWidget *parent = nullptr);

    /// Asks for a name and saves the stamp settings under it.
    void askForName();

    /// The prompt while it is shown, else null.
    [[nodiscard]] Alert *prompt() const;

private:
    void fill();
    void addPreset(const Preset &preset);

    Environment m_environment;
    QPointer<Alert> m_prompt;
};

} // namespace tallyfold
