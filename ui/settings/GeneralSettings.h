#pragma once

#include "ui/Environment.h"
#include "ui/controls/Card.h"

#include <QVBoxLayout>
#include <QWidget>

namespace tallyfold {

/// The settings that are not of the stamp: the welcome screen, the saved presets, and what is kept.
class GeneralSettings final : public QWidget {
    Q_OBJECT
public:
    explicit GeneralSettings(const Environment &environment, QWidget *parent = nullptr);

private:
    void addGettingStarted(QVBoxLayout &layout);
    void showPresets();
    QWidget *rowOf(const Preset &preset);

    Environment m_environment;
    QVBoxLayout *m_presets;
    std::vector<Preset> m_shown;
};

} // namespace tallyfold
