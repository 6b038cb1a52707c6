#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace tallyfold {

/// What the program is started with.
struct CommandLine {
    enum class Task {
        window,  ///< Opens the window, with `files`.
        service, ///< Waits for the session to ask for a window.
        help,
        version,
        usage, ///< There is no such option as `unknown`.
    };
    Task task = Task::window;
    /// Absolute. Names are bytes, so they are taken as they come.
    std::vector<std::filesystem::path> files;
    std::string unknown;

    /// Of the arguments after the program's name. Help and version are given whatever else is there.
    [[nodiscard]] static CommandLine of(std::span<const char *const> arguments);

    /// What can be given, a line each.
    [[nodiscard]] static const char *help();
};

} // namespace tallyfold
