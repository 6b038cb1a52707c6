#include "ui/desktop/RunsOnDesktop.h"

#include <QDBusConnection>

#include <utility>

namespace tallyfold {

RunsOnDesktop::RunsOnDesktop(AppModel &model, const CurrentPlan &plan, Desktop &desktop,
                             RunNotification::Windows windows, SessionEnd::Ask mayStop)
    : m_inhibitor(model, QDBusConnection::sessionBus()),
      m_taskbar(model, plan, QDBusConnection::sessionBus()),
      m_notification(model, desktop, QDBusConnection::sessionBus(), std::move(windows)),
      m_sessionEnd(model, std::move(mayStop))
{
}

} // namespace tallyfold
