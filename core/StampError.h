#pragma once

#include "core/FailureCause.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <variant>

namespace tallyfold {

/// Why a stamped copy was not made, with its cause. Contains no wording; that is up to the views.
struct StampError {
    /// The source could not be opened or read completely.
    struct Unreadable {
        QString name; ///< The source's.
        bool operator==(const Unreadable &) const = default;
    };
    /// The source requires a password to open.
    struct Locked {
        QString name; ///< The source's.
        bool operator==(const Locked &) const = default;
    };
    /// The source does not permit printing, changing or copying.
    struct Encrypted {
        QString name; ///< The source's.
        bool operator==(const Encrypted &) const = default;
    };
    /// The copy could not be created or completed.
    struct CannotWrite {
        QString name; ///< That of the file.
        bool operator==(const CannotWrite &) const = default;
    };
    /// The caller requested a stop.
    struct Cancelled {
        bool operator==(const Cancelled &) const = default;
    };
    using Case = std::variant<Unreadable, Locked, Encrypted, CannotWrite, Cancelled>;
    using Cause = std::optional<FailureCause>;

    Case value = Cancelled();
    Cause cause; ///< Absent if the case says everything.

    [[nodiscard]] static StampError unreadable(const QString &name, const Cause &cause = {});
    [[nodiscard]] static StampError locked(const QString &name);
    [[nodiscard]] static StampError encrypted(const QString &name);
    [[nodiscard]] static StampError cannotWrite(const QString &name, const Cause &cause = {});
    [[nodiscard]] static StampError cancelled();

    /// Whether it is the case `T`.
    template <typename T> [[nodiscard]] bool is() const
    {
        return std::holds_alternative<T>(value);
    }
    /// The name in the case; empty for `Cancelled`.
    [[nodiscard]] QString name() const;

    /// Compares the case and its name; the cause is ignored.
    bool operator==(const StampError &other) const
    {
        return value == other.value;
    }
};

/// Equal for equal errors.
[[nodiscard]] std::size_t hashValue(const StampError &error);

/// For logs: the case, and its cause.
QDebug operator<<(QDebug debug, const StampError &error);

} // namespace tallyfold
