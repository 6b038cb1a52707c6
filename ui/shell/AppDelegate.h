#pragma once

#include "ui/Environment.h"

#include <filesystem>
#include <span>

namespace tallyfold {

/// How the application answers to being started, reopened, handed files, and asked to end.
class AppDelegate final {
public:
    explicit AppDelegate(const Environment &environment);

    /// Greets a first launch.
    void didFinishLaunching();
    /// Opens the main window when none is visible, and brings the application to the front. Always true.
    bool shouldHandleReopen(bool hasVisibleWindows);
    /// Opens the main window and adds `files`, as if they had been dropped on it.
    void open(std::span<const std::filesystem::path> files);
    /// Lets a running production stop after its current page. Always true: nothing waits for it.
    bool shouldTerminate();

private:
    Environment m_environment;
};

} // namespace tallyfold
