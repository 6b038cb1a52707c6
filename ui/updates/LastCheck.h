#pragma once

#include <QDateTime>

#include <optional>

namespace tallyfold {

/// Remembers when the program last checked for updates by itself.
class LastCheck {
public:
    LastCheck() = default;
    virtual ~LastCheck() = default;
    LastCheck(const LastCheck &) = delete;
    LastCheck &operator=(const LastCheck &) = delete;

    /// Nothing when it never did, or that cannot be read.
    [[nodiscard]] virtual std::optional<QDateTime> load() const = 0;
    virtual void save(const QDateTime &time) = 0;
};

/// Whether a day has passed since `last`, or it never was, or is still to come: a clock that was wrong once
/// does not put an end to checks.
[[nodiscard]] bool isCheckDue(const std::optional<QDateTime> &last, const QDateTime &now);

} // namespace tallyfold
