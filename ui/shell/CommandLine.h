#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace tallyfold {

/// The parsed command line.
struct CommandLine {
    enum class Task {
        window,  ///< Opens the window, with `files`.
        service, ///< Waits for a request over D-Bus.
        help,
        version,
        usage, ///< The option `unknown` does not exist.
    };
    Task task = Task::window;
    /// Absolute paths. Names are bytes and are not decoded.
    std::vector<std::filesystem::path> files;
    std::string unknown;

    /// Parses the arguments after the program name. Help and version take precedence over other arguments.
    [[nodiscard]] static CommandLine of(std::span<const char *const> arguments);

    /// The description of all options, one per line.
    [[nodiscard]] static const char *help();
};

} // namespace tallyfold
