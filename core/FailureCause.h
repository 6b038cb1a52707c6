#pragma once

#include <QDebug>

#include <system_error>
#include <variant>

namespace tallyfold {

/// What kept a copy from being made, as far as it is known. Carries no words: views have those.
struct FailureCause {
    /// What was going on.
    enum class During {
        openingSource,
        readingSource,
        creatingCopy, ///< The output folder or the new file in it could not be opened.
        writingCopy,  ///< Up to the moment when all of it is on the disk.
        checkingCopy, ///< The copy was read back.
        namingCopy,   ///< The finished copy was to get its own name.
    };

    /// What is found without an error of the system.
    enum class Finding {
        damaged,      ///< The bytes are not those of a PDF, or not those that were written.
        changed,      ///< The file was written to while it was read.
        limitReached, ///< Reading it takes more memory or time than any file may take.
    };

    using Reason = std::variant<std::error_code, Finding>;

    During during = During::openingSource;
    Reason reason;

    /// The error of the system; none for a finding.
    [[nodiscard]] std::error_code systemError() const
    {
        const auto *error = std::get_if<std::error_code>(&reason);
        return error ? *error : std::error_code();
    }

    bool operator==(const FailureCause &) const = default;
};

/// For logs: what was going on, and the system's words or the finding.
QDebug operator<<(QDebug debug, const FailureCause &cause);

} // namespace tallyfold
