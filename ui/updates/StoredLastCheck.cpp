#include "ui/updates/StoredLastCheck.h"

namespace tallyfold {

namespace {

const QString lastCheckKey = QStringLiteral("lastUpdateCheck");

} // namespace

StoredLastCheck::StoredLastCheck(const QString &path) : m_settings(path) {}

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
