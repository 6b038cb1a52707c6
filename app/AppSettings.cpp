#include "app/AppSettings.h"

#include "core/JsonWriter.h"
#include "core/SettingsRecord.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tallyfold {

namespace {

bool isAbsent(const QJsonValue &value)
{
    return value.isUndefined() || value.isNull();
}

/// Reads a boolean into `field`; false if the value has another type.
bool read(const QJsonValue &value, bool &field)
{
    if (isAbsent(value)) {
        return true;
    }
    field = value.toBool();
    return value.isBool();
}

bool read(const QJsonValue &value, StampSettings &field)
{
    if (isAbsent(value)) {
        return true;
    }
    const std::optional<StampSettings> settings = decodeStampSettings(value);
    field = settings.value_or(field);
    return settings.has_value();
}

bool read(const QJsonValue &value, std::vector<Preset> &field)
{
    if (isAbsent(value)) {
        return true;
    }
    const QJsonArray records = value.toArray();
    for (const auto &record : records) {
        const std::optional<Preset> preset = decodePreset(record);
        if (!preset) {
            return false;
        }
        field.push_back(*preset);
    }
    return value.isArray();
}

} // namespace

AppSettings AppSettings::defaults()
{
    AppSettings settings;
    settings.stamp.pageOfTotalFormat = QCoreApplication::translate("AppSettings", "Page {page} of {total}");
    return settings;
}

std::optional<AppSettings> decodeAppSettings(const QByteArray &bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        return std::nullopt;
    }
    const QJsonObject record = document.object();
    AppSettings settings = AppSettings::defaults();
    const bool isRead = read(record.value(u"onboardingDone"), settings.onboardingDone) &&
                        read(record.value(u"stamp"), settings.stamp) &&
                        read(record.value(u"writeIndex"), settings.writeIndex) &&
                        read(record.value(u"writePrivilegeLog"), settings.writePrivilegeLog) &&
                        read(record.value(u"presets"), settings.presets);
    return isRead ? std::optional(settings) : std::nullopt;
}

std::optional<QByteArray> encode(const AppSettings &settings)
{
    const std::optional<QByteArray> stamp = encode(settings.stamp);
    if (!stamp) {
        return std::nullopt;
    }
    std::vector<QByteArray> presets;
    presets.reserve(settings.presets.size());
    for (const Preset &preset : settings.presets) {
        const std::optional<QByteArray> record = encode(preset);
        if (!record) {
            return std::nullopt;
        }
        presets.push_back(*record);
    }
    return JsonWriter::object({{"onboardingDone", JsonWriter::boolean(settings.onboardingDone)},
                               {"stamp", *stamp},
                               {"writeIndex", JsonWriter::boolean(settings.writeIndex)},
                               {"writePrivilegeLog", JsonWriter::boolean(settings.writePrivilegeLog)},
                               {"presets", JsonWriter::array(presets)}});
}

} // namespace tallyfold
