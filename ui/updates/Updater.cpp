#include "ui/updates/Updater.h"

#include "ui/updates/Judgement.h"

#include <utility>

namespace tallyfold {

namespace {

UpdateOutcome outcomeOf(const FeedAnswer &answer, const AppVersion &current)
{
    if (const auto *failure = std::get_if<UpdateCheckFailed>(&answer)) {
        return *failure;
    }
    return judge(std::get<QByteArray>(answer), current);
}

} // namespace

Updater::Updater(const FeedSettings &settings, std::unique_ptr<LastCheck> lastCheck,
                 const UpdaterOptions &options, QObject *parent)
    : QObject(parent),
      m_settings(settings),
      m_lastCheck(std::move(lastCheck)),
      m_now(options.now),
      m_client(settings.current.text(), options.transport, options.limits)
{
    connect(&m_client, &FeedClient::finished, this, &Updater::take);
}

bool Updater::isChecking() const
{
    return m_isChecking;
}

bool Updater::isCheckingQuietly() const
{
    return m_client.isFetching() && !m_isChecking;
}

void Updater::checkForUpdates()
{
    if (m_isChecking) {
        return;
    }
    m_isChecking = true;
    m_client.fetch(m_settings.feed); // A quiet check that is under way becomes the user's.
    Q_EMIT checkingChanged();
}

void Updater::checkQuietlyIfDue()
{
    if (m_settings.feed.isEmpty() || m_client.isFetching()) {
        return;
    }
    const QDateTime now = m_now();
    if (!isCheckDue(m_lastCheck->load(), now)) {
        return;
    }
    m_lastCheck->save(now); // Already now: a server in trouble is not asked more often for it.
    m_client.fetch(m_settings.feed);
}

void Updater::take(const FeedAnswer &answer)
{
    const UpdateOutcome outcome = outcomeOf(answer, m_settings.current);
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
