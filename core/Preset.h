#pragma once

#include "core/StampSettings.h"

#include <QString>
#include <QUuid>

#include <cstddef>
#include <cstdint>

namespace tallyfold {

/// Stamp settings saved under a name. Known by `id`; two presets are equal when all three fields are.
struct Preset {
    static constexpr std::int64_t maxNameLength = 80; ///< User-perceived characters.

    QUuid id;
    QString name;
    StampSettings settings;

    /// The preset with the first `maxNameLength` characters of `name` and the normalised `settings`.
    [[nodiscard]] static Preset of(const QUuid &id, const QString &name, const StampSettings &settings);

    bool operator==(const Preset &) const = default;
};

/// Equal for equal presets.
[[nodiscard]] std::size_t hashValue(const Preset &preset);

} // namespace tallyfold
