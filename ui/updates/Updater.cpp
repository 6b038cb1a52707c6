#include "ui/updates/Updater.h"

#include "ui/updates/Appcast.h"

#include <utility>

namespace tallyfold {

static const QString lastCheckKey = QStringLiteral("lastUpdateCheck");

FeedSettings FeedSettings::ours()
{
    return {QUrl(QStringLiteral(TALLYFOLD_FEED_URL)),
            AppVersion::parse(QStringLiteral(TALLYFOLD_VERSION)).value_or(AppVersion())};
}

Updater::Updater(const FeedSettings &settings, const UpdaterOptions &options, QObject *parent)
    : QObject(parent),
      m_settings(settings),
      m_memory(options.settingsPath ? UserSettings(*options.settingsPath) : UserSettings()),
      m_options(options)
{
}

void Updater::checkForUpdates()
{
    if (std::exchange(m_isChecking, true)) {
        return;
    }
    fetch(); // An automatic check in progress becomes that of the user.
    Q_EMIT checkingChanged();
}

void Updater::checkQuietlyIfDue()
{
    const QDateTime now = m_options.now();
    if (m_settings.feed.isEmpty() || m_isFetching || !isCheckDue(now)) {
        return;
    }
    // Before the request, so that errors do not lead to more frequent requests.
    m_memory.setValue(lastCheckKey, now.toUTC().toString(Qt::ISODate));
    fetch();
}

bool Updater::isCheckDue(const QDateTime &now) const
{
    constexpr qint64 day = 86'400; // Seconds.
    const QDateTime last = QDateTime::fromString(m_memory.value(lastCheckKey).toString(), Qt::ISODate);
    // A date in the future, from a wrong clock, does not prevent checks.
    return !last.isValid() || last > now || last.secsTo(now) >= day;
}

void Updater::fetch()
{
    if (!std::exchange(m_isFetching, true)) {
        fetchFeed({m_settings.feed, m_settings.current.text(), m_options.transport, m_options.limits}, *this,
                  [this](const FeedAnswer &answer) { take(answer); });
    }
}

void Updater::take(const FeedAnswer &answer)
{
    m_isFetching = false;
    const auto *failure = std::get_if<UpdateCheckFailed>(&answer);
    const UpdateOutcome outcome =
        failure ? *failure : evaluateFeed(std::get<QByteArray>(answer), m_settings.current);
    if (!std::exchange(m_isChecking, false)) {
        if (const auto *newer = std::get_if<NewerVersion>(&outcome)) {
            Q_EMIT newerFound(*newer);
        }
        return;
    }
    Q_EMIT checkingChanged();
    Q_EMIT finished(outcome);
}

} // namespace tallyfold
