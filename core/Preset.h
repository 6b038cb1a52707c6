#pragma once

#include "core/StampSettings.h"

#include <QString>
#include <QUuid>

#include <cstddef>
#include <cstdint>

namespace tallyfold {

/// Stamp settings saved under a name. Identified by `id`; equality compares all three fields.
struct Preset {
    static constexpr std::int64_t maxNameLength = 80; ///< User-perceived characters.

    QUuid id;
    QString name;
    StampSettings settings;

    /// The preset with `name` truncated to `maxNameLength` characters and `settings` normalized.
    [[nodiscard]] static Preset of(const QUuid &id, const QString &name, const StampSettings &settings);

    bool operator==(const Preset &) const = default;
};

/// Equal for equal presets.
[[nodiscard]] std::size_t hashValue(const Preset &preset);

} // namespace tallyfold
