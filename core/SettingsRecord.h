#pragma once

#include "core/Preset.h"
#include "core/StampSettings.h"

#include <QByteArray>
#include <QJsonValue>

#include <optional>

namespace tallyfold {

/// The stored form of settings and presets: JSON objects keyed by field name, with enumerations as the names
/// of their cases. Each key is read independently of the others, so that a record of another version, or an
/// edited one, loses only the keys that are invalid.

/// The settings in `record`, normalized. A key that is missing, null, of another type or an unknown case
/// gives the default of the field. Nothing if `record` is not an object.
[[nodiscard]] std::optional<StampSettings> decodeStampSettings(const QJsonValue &record);

/// The preset in `record`, with a new `id` if it has none. Nothing if `record` is not an object.
[[nodiscard]] std::optional<Preset> decodePreset(const QJsonValue &record);

/// `settings` as compact JSON with all fields in order. Nothing if a number is not finite, which JSON cannot
/// represent.
[[nodiscard]] std::optional<QByteArray> encode(const StampSettings &settings);

/// `preset` as compact JSON.
[[nodiscard]] std::optional<QByteArray> encode(const Preset &preset);

} // namespace tallyfold
