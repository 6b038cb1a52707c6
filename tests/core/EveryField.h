#pragma once

#include "core/StampSettings.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>

#include <functional>
#include <string>
#include <vector>

namespace tallyfold::tests {

/// One of the fields of the stamp settings, for tests that must forget none.
struct SettingsField {
    /// Something stored under the key of the field, and what is read where it stands.
    struct Reading {
        QJsonValue stored; ///< Undefined where there is no such key.
        std::function<void(StampSettings &)> apply;
    };

    std::string key; ///< In a stored record.
    /// Gives the field of the settings a valid value that is not its default.
    std::function<void(StampSettings &)> change;
    /// Gives the field its default.
    std::function<void(StampSettings &)> reset;
    /// The key missing, null, of other types, and with values that make no sense.
    std::vector<Reading> readings;
};

/// All fields, in their order.
[[nodiscard]] const std::vector<SettingsField> &everyField();

/// Settings that `change` made of every field: none has its default.
[[nodiscard]] StampSettings settingsWithoutDefaults();

/// The value that the JSON text `json` is.
[[nodiscard]] QJsonValue jsonValue(const QByteArray &json);

/// `record`, a JSON object, with `value` under `key`, or without it where `value` is undefined.
[[nodiscard]] QJsonObject withKey(QJsonObject record, const std::string &key, const QJsonValue &value);

} // namespace tallyfold::tests
