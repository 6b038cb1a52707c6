#pragma once

#include <QString>

#include <cstddef>

namespace tallyfold {

/// Why a stamped copy was not made. Carries no words: views have those.
struct StampError {
    enum class Kind {
        unreadable,  ///< The source could not be opened, or read to its end. `name`: the source's.
        locked,      ///< The source needs a password to open. `name`: the source's.
        encrypted,   ///< The source's owner withholds printing, changing or copying. `name`: the source's.
        cannotWrite, ///< The copy could not be made, or not finished. `name`: that of the file.
        cancelled,   ///< The caller asked to stop. No name.
    };

    Kind kind = Kind::cancelled;
    QString name;

    [[nodiscard]] static StampError unreadable(const QString &name);
    [[nodiscard]] static StampError locked(const QString &name);
    [[nodiscard]] static StampError encrypted(const QString &name);
    [[nodiscard]] static StampError cannotWrite(const QString &name);
    [[nodiscard]] static StampError cancelled();

    bool operator==(const StampError &) const = default;
};

/// Equal for equal errors.
[[nodiscard]] std::size_t hashValue(const StampError &error);

} // namespace tallyfold
