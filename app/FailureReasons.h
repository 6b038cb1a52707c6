#pragma once

#include "core/StampError.h"

#include <cstdint>
#include <vector>

namespace tallyfold {

/// What several failures have in common.
struct FailureReason {
    StampError example; ///< The first of them.
    std::int64_t files = 0;

    bool operator==(const FailureReason &) const = default;
};

/// The reasons of `errors`, the commonest first and those as common in the order of `errors`. Two have the
/// same reason where they are the same case with the same cause, whatever the files are called.
[[nodiscard]] std::vector<FailureReason> failureReasons(const std::vector<StampError> &errors);

} // namespace tallyfold
