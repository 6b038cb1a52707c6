#include "app/UserSettings.h"

namespace tallyfold {

UserSettings::UserSettings()
    : QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Tallyfold"),
                QStringLiteral("Tallyfold"))
{
    setFallbacksEnabled(false);
}

UserSettings::UserSettings(const QString &path) : QSettings(path, QSettings::IniFormat) {}

} // namespace tallyfold
