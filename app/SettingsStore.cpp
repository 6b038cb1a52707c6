#include "app/SettingsStore.h"

namespace tallyfold {

namespace {

const QString settingsKey = QStringLiteral("settings");

} // namespace

SettingsStore::SettingsStore(const QString &path) : m_settings(path) {}

AppSettings SettingsStore::load() const
{
    return decodeAppSettings(m_settings.value(settingsKey).toByteArray()).value_or(AppSettings::defaults());
}

void SettingsStore::save(const AppSettings &settings)
{
    if (const std::optional<QByteArray> document = encode(settings)) {
        m_settings.setValue(settingsKey, *document);
    }
}

} // namespace tallyfold
