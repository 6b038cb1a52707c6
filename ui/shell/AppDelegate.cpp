#include "ui/shell/AppDelegate.h"

namespace tallyfold {

AppDelegate::AppDelegate(const Environment &environment) : m_environment(environment) {}

void AppDelegate::didFinishLaunching()
{
    if (!m_environment.model.settings().onboardingDone) {
        m_environment.model.setSheet(Sheet::welcome);
    }
}

bool AppDelegate::shouldHandleReopen(bool hasVisibleWindows)
{
    if (!hasVisibleWindows) {
        m_environment.openWindow(WindowId::main);
    }
    return true;
}

void AppDelegate::open(std::span<const std::filesystem::path> files)
{
    m_environment.openWindow(WindowId::main);
    m_environment.model.add(files);
}

bool AppDelegate::shouldTerminate()
{
    m_environment.model.cancelRun();
    return true;
}

} // namespace tallyfold
