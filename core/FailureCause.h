#pragma once

#include <QDebug>

#include <system_error>
#include <variant>

namespace tallyfold {

/// The cause of a failed copy, as far as it is known. Contains no wording; that is up to the views.
struct FailureCause {
    /// The step that failed.
    enum class During {
        openingSource,
        readingSource,
        creatingCopy, ///< Opening the output folder or creating a file in it.
        writingCopy,  ///< Includes flushing it to the disk.
        checkingCopy, ///< Reading the copy back.
        namingCopy,   ///< Moving the finished copy to its own name.
    };

    /// A cause that is not a system error.
    enum class Finding {
        damaged,      ///< The file is not a valid PDF, or not what was written.
        changed,      ///< The file was modified while it was read.
        limitReached, ///< Reading it needs more memory or time than is allowed for a file.
    };

    using Reason = std::variant<std::error_code, Finding>;

    During during = During::openingSource;
    Reason reason;

    /// The system error; a default `error_code` for a finding.
    [[nodiscard]] std::error_code systemError() const
    {
        const auto *error = std::get_if<std::error_code>(&reason);
        return error ? *error : std::error_code();
    }

    bool operator==(const FailureCause &) const = default;
};

/// For logs: the step, and the system's message or the finding.
QDebug operator<<(QDebug debug, const FailureCause &cause);

} // namespace tallyfold
