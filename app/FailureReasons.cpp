#include "app/FailureReasons.h"

#include <algorithm>

namespace tallyfold {

std::vector<FailureReason> failureReasons(const std::vector<StampError> &errors)
{
    std::vector<FailureReason> reasons;
    for (const StampError &error : errors) {
        const auto reason =
            std::find_if(reasons.begin(), reasons.end(), [&error](const FailureReason &other) {
                return other.example.value.index() == error.value.index() &&
                       other.example.cause == error.cause;
            });
        if (reason == reasons.end()) {
            reasons.push_back({error, 1});
        } else {
            ++reason->files;
        }
    }
    std::stable_sort(
        reasons.begin(), reasons.end(),
        [](const FailureReason &left, const FailureReason &right) { return left.files > right.files; });
    return reasons;
}

} // namespace tallyfold
