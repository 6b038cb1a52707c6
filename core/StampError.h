#pragma once

#include "core/FailureCause.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <variant>

namespace tallyfold {

/// Why a stamped copy was not made, and what led to it. Carries no words: views have those.
struct StampError {
    /// The source could not be opened, or read to its end.
    struct Unreadable {
        QString name; ///< The source's.
        bool operator==(const Unreadable &) const = default;
    };
    /// The source needs a password to open.
    struct Locked {
        QString name; ///< The source's.
        bool operator==(const Locked &) const = default;
    };
    /// The source's owner withholds printing, changing or copying.
    struct Encrypted {
        QString name; ///< The source's.
        bool operator==(const Encrypted &) const = default;
    };
    /// The copy could not be made, or not finished.
    struct CannotWrite {
        QString name; ///< That of the file.
        bool operator==(const CannotWrite &) const = default;
    };
    /// The caller asked to stop.
    struct Cancelled {
        bool operator==(const Cancelled &) const = default;
    };
    using Case = std::variant<Unreadable, Locked, Encrypted, CannotWrite, Cancelled>;
    using Cause = std::optional<FailureCause>;

    Case value = Cancelled();
    Cause cause; ///< Absent where the case says all there is.

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
    /// The name that the case has; empty where it has none.
    [[nodiscard]] QString name() const;

    /// By the case and what it has: two errors are the same whatever led to them.
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
