#pragma once

#include "ui/Environment.h"
#include "ui/controls/Card.h"

#include <QVBoxLayout>
#include <QWidget>

namespace tallyfold {

/// The settings other than those of the stamp: welcome screen, saved presets, stored data.
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
