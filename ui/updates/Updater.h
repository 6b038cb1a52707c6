#pragma once

#include "ui/updates/FeedClient.h"
#include "ui/updates/FeedSettings.h"
#include "ui/updates/LastCheck.h"
#include "ui/updates/UpdateOutcome.h"

#include <QDateTime>
#include <QObject>

#include <functional>
#include <memory>

namespace tallyfold {

/// How an updater goes about it. Tests bring their own.
struct UpdaterOptions {
    Transport transport = Transport::httpsOnly;
    FeedLimits limits;
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTimeUtc(); };
};

/// Finds out whether there is a newer version, and tells. It installs nothing. Lives on the main thread and
/// never makes it wait.
class Updater final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool checking READ isChecking NOTIFY checkingChanged)
public:
    Updater(const FeedSettings &settings, std::unique_ptr<LastCheck> lastCheck,
            const UpdaterOptions &options = {}, QObject *parent = nullptr);

    /// Whether a check that the user started is under way.
    [[nodiscard]] bool isChecking() const;
    /// Whether one that nobody asked for is.
    [[nodiscard]] bool isCheckingQuietly() const;

    /// Checks because the user wants to know: `finished` tells what came of it, whatever it is, and never
    /// before this returns. Does nothing while such a check is under way.
    void checkForUpdates();

    /// Checks by itself, at most once a day, and says something only when there is a newer version. Does
    /// nothing without a feed, or while any check is under way.
    void checkQuietlyIfDue();

Q_SIGNALS:
    void checkingChanged();
    /// The user's check came to its end; it is not under way any more.
    void finished(const tallyfold::UpdateOutcome &outcome);
    /// A check that nobody asked for found something.
    void newerFound(const tallyfold::NewerVersion &version);

private:
    void take(const FeedAnswer &answer);

    FeedSettings m_settings;
    std::unique_ptr<LastCheck> m_lastCheck;
    std::function<QDateTime()> m_now;
    bool m_isChecking = false;
    FeedClient m_client;
};

} // namespace tallyfold
