#pragma once

#include <string>
#include <vector>

namespace tallyfold::tests {

/// What a program printed, and how it ended.
struct ToolResult {
    int exitCode = -1; ///< -1 when it could not be started or was ended by a signal.
    std::string output;
    std::string errors;
};

/// Runs `arguments[0]`, found on the path, with the other arguments, and waits for its end.
[[nodiscard]] ToolResult runTool(const std::vector<std::string> &arguments);

} // namespace tallyfold::tests
