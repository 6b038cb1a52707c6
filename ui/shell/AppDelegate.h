#pragma once

#include "ui/Environment.h"

#include <filesystem>
#include <span>

namespace tallyfold {

/// Handles the start, reactivation, opening of files, and quitting of the application.
class AppDelegate final {
public:
    explicit AppDelegate(const Environment &environment);

    /// Shows the welcome sheet at the first launch.
    void didFinishLaunching();
    /// Opens the main window if none is visible, and raises the application. Always true.
    bool shouldHandleReopen(bool hasVisibleWindows);
    /// Opens the main window and adds `files`, as if dropped on it.
    void open(std::span<const std::filesystem::path> files);
    /// Stops a running production after its current page. Always true: quitting does not wait.
    bool shouldTerminate();

private:
    Environment m_environment;
};

} // namespace tallyfold
