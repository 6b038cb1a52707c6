#pragma once

#include "ui/Environment.h"

#include <QDialog>

namespace tallyfold {

/// The window of the application's settings.
class SettingsView final : public QDialog {
    Q_OBJECT
public:
    explicit SettingsView(const Environment &environment, QWidget *parent = nullptr);
};

} // namespace tallyfold
