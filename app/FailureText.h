#pragma once

#include "core/FailureCause.h"
#include "core/StampError.h"

#include <QString>

#include <optional>
#include <system_error>

namespace tallyfold {

/// A sentence on the cause of `error` and one on what to do; nothing if the cause is unknown.
[[nodiscard]] std::optional<QString> failureText(const StampError &error);

/// As above for a file that could not be written because of `error`; nothing if the message of the system is
/// all that can be said.
[[nodiscard]] std::optional<QString> writingFailureText(std::error_code error);

} // namespace tallyfold
