#pragma once

#include "ui/desktop/RunNotification.h"
#include "ui/desktop/SessionEnd.h"
#include "ui/desktop/SleepInhibitor.h"
#include "ui/desktop/TaskbarProgress.h"

namespace tallyfold {

/// Everything the desktop of the session does for the runs of a model.
class RunsOnDesktop final {
public:
    /// Parameters as those of the members, on the session's bus. `model`, `plan` and `desktop` must outlive
    /// this.
    RunsOnDesktop(AppModel &model, const CurrentPlan &plan, Desktop &desktop,
                  RunNotification::Windows windows, SessionEnd::Ask mayStop);

private:
    SleepInhibitor m_inhibitor;
    TaskbarProgress m_taskbar;
    RunNotification m_notification;
    SessionEnd m_sessionEnd;
};

} // namespace tallyfold
