#pragma once

#include <functional>

namespace tallyfold::tests {

/// How a child process ended.
struct ChildEnd {
    int code = -1;  ///< What it gave back; -1 when it was ended by a signal.
    int signal = 0; ///< The signal, or 0.

    bool operator==(const ChildEnd &) const = default;
};

/// Runs `work` in a child process, which ends with what it gives, from 0 to 255, without tidying up.
[[nodiscard]] ChildEnd inChild(const std::function<int()> &work);

} // namespace tallyfold::tests
