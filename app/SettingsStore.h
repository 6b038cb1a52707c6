#pragma once

#include "app/AppSettings.h"
#include "app/UserSettings.h"

#include <QString>

namespace tallyfold {

/// Stores the settings as one JSON document under the key "settings" of the user's settings file. Callers see
/// no errors: settings that cannot be read give the defaults, and settings that cannot be written are lost.
class SettingsStore {
public:
    /// The settings in the standard location of the platform.
    SettingsStore() = default;
    /// The settings in the file at `path`.
    explicit SettingsStore(const QString &path);

    [[nodiscard]] AppSettings load() const;
    void save(const AppSettings &settings);

private:
    UserSettings m_settings;
};

} // namespace tallyfold
