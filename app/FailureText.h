#pragma once

#include "core/FailureCause.h"
#include "core/StampError.h"

#include <QString>

#include <optional>
#include <system_error>

namespace tallyfold {

/// One sentence on why `error` came to be and one on what to do next; nothing where no more is known than
/// that there is no copy.
[[nodiscard]] std::optional<QString> failureText(const StampError &error);

/// The same for a file that could not be written because of `error`; nothing where the system's own words are
/// all there is to say.
[[nodiscard]] std::optional<QString> writingFailureText(std::error_code error);

} // namespace tallyfold
