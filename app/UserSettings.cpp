#include "app/UserSettings.h"

#include "app/Log.h"

#include <utility>

namespace tallyfold {

UserSettings::UserSettings()
    : QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Tallyfold"),
                QStringLiteral("Tallyfold"))
{
    setFallbacksEnabled(false);
}

UserSettings::UserSettings(const QString &path) : QSettings(path, QSettings::IniFormat) {}

UserSettings::~UserSettings()
{
    sync();
    logStatus();
}

bool UserSettings::event(QEvent *event)
{
    const bool isDone = QSettings::event(event); // Writes pending changes.
    logStatus();
    return isDone;
}

void UserSettings::logStatus()
{
    if (status() != NoError && !std::exchange(m_isLogged, true)) {
        qCInfo(appLog) << "the settings file cannot be read or written:" << status();
    }
}

} // namespace tallyfold
