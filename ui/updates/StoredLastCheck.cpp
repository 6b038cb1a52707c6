#include "ui/updates/StoredLastCheck.h"

namespace tallyfold {

namespace {

const QString lastCheckKey = QStringLiteral("lastUpdateCheck");

} // namespace

StoredLastCheck::StoredLastCheck()
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Tallyfold"),
                 QStringLiteral("Tallyfold"))
{
    m_settings.setFallbacksEnabled(false); // What another user or the system set is not the user's.
}

StoredLastCheck::StoredLastCheck(const QString &path) : m_settings(path, QSettings::IniFormat) {}

std::optional<QDateTime> StoredLastCheck::load() const
{
    const QDateTime time = QDateTime::fromString(m_settings.value(lastCheckKey).toString(), Qt::ISODate);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

void StoredLastCheck::save(const QDateTime &time)
{
    m_settings.setValue(lastCheckKey, time.toUTC().toString(Qt::ISODate));
}

} // namespace tallyfold
