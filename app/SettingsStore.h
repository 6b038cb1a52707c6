#pragma once

#include "app/AppSettings.h"
#include "app/UserSettings.h"

#include <QString>

namespace tallyfold {

/// Where the settings are kept: one JSON document under the key "settings" of the user's settings file.
/// Neither reading nor writing ever fails towards the caller: what cannot be read gives the defaults, what
/// cannot be written is lost.
class SettingsStore {
public:
    /// The user's own settings, in the platform's usual place.
    SettingsStore() = default;
    /// Those in the file at `path`.
    explicit SettingsStore(const QString &path);

    [[nodiscard]] AppSettings load() const;
    void save(const AppSettings &settings);

private:
    UserSettings m_settings;
};

} // namespace tallyfold
