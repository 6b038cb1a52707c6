#include "app/SettingsStore.h"

#include "app/Log.h"

namespace tallyfold {

namespace {

const QString settingsKey = QStringLiteral("settings");

} // namespace

SettingsStore::SettingsStore(const QString &path) : m_settings(path) {}

AppSettings SettingsStore::load() const
{
    const QByteArray document = m_settings.value(settingsKey).toByteArray();
    const std::optional<AppSettings> settings = decodeAppSettings(document);
    if (!settings && !document.isEmpty()) {
        qCInfo(appLog) << "the stored settings are no settings; the defaults are used";
    }
    return settings.value_or(AppSettings::defaults());
}

void SettingsStore::save(const AppSettings &settings)
{
    if (const std::optional<QByteArray> document = encode(settings)) {
        m_settings.setValue(settingsKey, *document);
    } else {
        qCInfo(appLog) << "settings that cannot be stored: a number is not finite";
    }
}

} // namespace tallyfold
