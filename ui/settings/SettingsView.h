#pragma once

#include "ui/Environment.h"

#include <QDialog>

namespace tallyfold {

/// The settings window of the application.
class SettingsView final : public QDialog {
    Q_OBJECT
public:
    explicit SettingsView(const Environment &environment, QWidget *parent = nullptr);
};

} // namespace tallyfold
