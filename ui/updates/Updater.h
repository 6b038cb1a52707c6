#pragma once

#include "app/UserSettings.h"
#include "ui/updates/AppVersion.h"
#include "ui/updates/FeedClient.h"
#include "ui/updates/UpdateOutcome.h"

#include <QDateTime>
#include <QObject>

#include <functional>
#include <optional>

namespace tallyfold {

/// Where newer versions are told of, and what they have to be newer than.
struct FeedSettings {
    QUrl feed; ///< Empty: nowhere.
    AppVersion current;

    /// Those this program was built with.
    [[nodiscard]] static FeedSettings ours();
};

/// How an updater goes about it. Tests bring their own.
struct UpdaterOptions {
    Transport transport = Transport::httpsOnly;
    FeedLimits limits;
    /// Where the time of the last quiet check is kept; in the user's settings file unless told otherwise.
    std::optional<QString> settingsPath;
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTimeUtc(); };
};

/// Finds out whether there is a newer version, and tells. It installs nothing. Lives on the main thread and
/// never makes it wait.
class Updater final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool checking READ isChecking NOTIFY checkingChanged)
public:
    explicit Updater(const FeedSettings &settings, const UpdaterOptions &options = {},
                     QObject *parent = nullptr);

    /// Whether a check that the user started is under way.
    [[nodiscard]] bool isChecking() const
    {
        return m_isChecking;
    }
    /// Whether one that nobody asked for is.
    [[nodiscard]] bool isCheckingQuietly() const
    {
        return m_isFetching && !m_isChecking;
    }

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
    [[nodiscard]] bool isCheckDue(const QDateTime &now) const;
    void fetch();
    void take(const FeedAnswer &answer);

    FeedSettings m_settings;
    UserSettings m_memory; ///< Of the last quiet check.
    UpdaterOptions m_options;
    bool m_isChecking = false;
    bool m_isFetching = false;
};

} // namespace tallyfold
