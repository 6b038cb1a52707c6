#pragma once

#include <QStringList>

#include <cstdint>
#include <optional>

namespace tallyfold {

class ProductionPlan;

/// A notice about the password-protected sources of a plan.
struct PasswordNotice {
    QStringList names;               ///< Of the sources, in production order.
    bool nothingElseToStamp = false; ///< The plan has no other file to write.

    /// The notice for `plan`; nothing if it contains no password-protected source.
    [[nodiscard]] static std::optional<PasswordNotice> of(const ProductionPlan &plan);

    /// Number of names.
    [[nodiscard]] std::int64_t count() const;

    /// The first names, and the number of names omitted.
    struct ShortList {
        QStringList names;
        std::int64_t more = 0;
        bool operator==(const ShortList &) const = default;
    };
    /// At most `limit` names, but at least one.
    [[nodiscard]] ShortList shortList(std::int64_t limit) const;

    bool operator==(const PasswordNotice &) const = default;
};

} // namespace tallyfold
