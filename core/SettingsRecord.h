#pragma once

#include "core/Preset.h"
#include "core/StampSettings.h"

#include <QByteArray>
#include <QJsonValue>

#include <optional>

namespace tallyfold {

/// The stored form of settings and presets: JSON objects keyed by the names of the fields, enumerations by
/// the names of their cases. Reading is tolerant key by key, so that a record of an older or newer version,
/// or one somebody edited, loses no more than the keys that make no sense.

/// The settings in `record`, normalised. A key that is missing, null, of another type or names an unknown
/// case gives the field's default. Nothing when `record` is not an object.
[[nodiscard]] std::optional<StampSettings> decodeStampSettings(const QJsonValue &record);

/// The preset in `record`; without an `id` it gets a fresh one. Nothing when `record` is not an object.
[[nodiscard]] std::optional<Preset> decodePreset(const QJsonValue &record);

/// `settings` as compact JSON, every field, in the order of the fields. Nothing when a number is not finite,
/// which JSON cannot hold.
[[nodiscard]] std::optional<QByteArray> encode(const StampSettings &settings);

/// `preset` as compact JSON.
[[nodiscard]] std::optional<QByteArray> encode(const Preset &preset);

} // namespace tallyfold
