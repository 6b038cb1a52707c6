#pragma once

#include "core/StampSettings.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>

#include <functional>
#include <string>
#include <vector>

namespace tallyfold::tests {

/// A field of the stamp settings, for tests that cover all fields.
struct SettingsField {
    /// A stored value of the field and its effect when read.
    struct Reading {
        QJsonValue stored; ///< Undefined where there is no such key.
        std::function<void(StampSettings &)> apply;
    };

    std::string key; ///< In a stored record.
    /// Sets the field to a valid value other than its default.
    std::function<void(StampSettings &)> change;
    /// Sets the field to its default.
    std::function<void(StampSettings &)> reset;
    /// Missing key, null, wrong types and invalid values.
    std::vector<Reading> readings;
};

/// All fields, in order.
[[nodiscard]] const std::vector<SettingsField> &everyField();

/// Settings with every field changed, so that none has its default.
[[nodiscard]] StampSettings settingsWithoutDefaults();

/// The value of the JSON text `json`.
[[nodiscard]] QJsonValue jsonValue(const QByteArray &json);

/// The JSON object `record` with `value` under `key`, or without the key if `value` is undefined.
[[nodiscard]] QJsonObject withKey(QJsonObject record, const std::string &key, const QJsonValue &value);

} // namespace tallyfold::tests
