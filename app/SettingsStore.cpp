#include "app/SettingsStore.h"

namespace tallyfold {

namespace {

const QString settingsKey = QStringLiteral("settings");

} // namespace

SettingsStore::SettingsStore()
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Tallyfold"),
                 QStringLiteral("Tallyfold"))
{
    m_settings.setFallbacksEnabled(false); // What another user or the system set is not the user's.
}

SettingsStore::SettingsStore(const QString &path) : m_settings(path, QSettings::IniFormat) {}

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
