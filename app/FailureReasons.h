#pragma once

#include "core/StampError.h"

#include <cstdint>
#include <vector>

namespace tallyfold {

/// A reason that several failures share.
struct FailureReason {
    StampError example; ///< The first of the failures.
    std::int64_t files = 0;

    bool operator==(const FailureReason &) const = default;
};

/// The reasons of `errors`, the most frequent first; equally frequent ones in the order of `errors`. Two
/// errors have the same reason if case and cause are equal, regardless of the names of files.
[[nodiscard]] std::vector<FailureReason> failureReasons(const std::vector<StampError> &errors);

} // namespace tallyfold
