#pragma once

#include "app/AppModel.h"
#include "app/CurrentPlan.h"

#include <QDBusConnection>
#include <QObject>

#include <cstdint>

namespace tallyfold {

/// Shows the progress of a run on the taskbar entry of the program, for desktops that support
/// `com.canonical.Unity.LauncherEntry`, such as Plasma and some docks.
class TaskbarProgress final : public QObject {
    Q_OBJECT
public:
    /// For the runs of `model`; `plan` gives the number of pages at their start.
    TaskbarProgress(const AppModel &model, const CurrentPlan &plan, const QDBusConnection &bus);

private:
    void tell();

    const AppModel *m_model;
    QDBusConnection m_bus;
    std::int64_t m_pages = 0; ///< Pages of the run.
};

} // namespace tallyfold
