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

/// The feed address and the version of this program.
struct FeedSettings {
    QUrl feed; ///< Empty for none.
    AppVersion current;

    /// The settings of this build.
    [[nodiscard]] static FeedSettings ours();
};

/// The environment of an updater, which tests replace.
struct UpdaterOptions {
    Transport transport = Transport::httpsOnly;
    FeedLimits limits;
    /// The file that stores the time of the last automatic check; by default the user's settings file.
    std::optional<QString> settingsPath;
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTimeUtc(); };
};

/// Checks for newer versions. Does not install them. Lives on the main thread and never blocks it.
class Updater final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool checking READ isChecking NOTIFY checkingChanged)
public:
    explicit Updater(const FeedSettings &settings, const UpdaterOptions &options = {},
                     QObject *parent = nullptr);

    /// Whether a check started by the user is in progress.
    [[nodiscard]] bool isChecking() const
    {
        return m_isChecking;
    }
    /// Whether an automatic check is in progress.
    [[nodiscard]] bool isCheckingQuietly() const
    {
        return m_isFetching && !m_isChecking;
    }

    /// Checks on request of the user: `finished` reports any result, never before this returns. No effect
    /// while such a check is in progress.
    void checkForUpdates();

    /// Checks automatically, at most once a day, and reports only a newer version. No effect without a feed
    /// or while any check is in progress.
    void checkQuietlyIfDue();

Q_SIGNALS:
    void checkingChanged();
    /// The check started by the user has ended.
    void finished(const tallyfold::UpdateOutcome &outcome);
    /// An automatic check found a newer version.
    void newerFound(const tallyfold::NewerVersion &version);

private:
    [[nodiscard]] bool isCheckDue(const QDateTime &now) const;
    void fetch();
    void take(const FeedAnswer &answer);

    FeedSettings m_settings;
    UserSettings m_memory; ///< Stores the time of the last automatic check.
    UpdaterOptions m_options;
    bool m_isChecking = false;
    bool m_isFetching = false;
};

} // namespace tallyfold
