#pragma once

#include "app/AppModel.h"
#include "app/CurrentPlan.h"

#include <QDBusConnection>
#include <QObject>

#include <cstdint>

namespace tallyfold {

/// Shows how far a run is on the program's entry in the taskbar, where a desktop's taskbar listens for that
/// (`com.canonical.Unity.LauncherEntry`, which Plasma and docks follow).
class TaskbarProgress final : public QObject {
    Q_OBJECT
public:
    /// For the runs of `model`, whose plan is `plan` when they start.
    TaskbarProgress(const AppModel &model, const CurrentPlan &plan, const QDBusConnection &bus);

private:
    void tell();

    const AppModel *m_model;
    QDBusConnection m_bus;
    std::int64_t m_pages = 0; ///< Of the run.
};

} // namespace tallyfold
