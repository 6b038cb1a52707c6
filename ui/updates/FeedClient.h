#pragma once

#include "ui/updates/Transport.h"
#include "ui/updates/UpdateOutcome.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <memory>
#include <variant>

namespace tallyfold {

/// What a server may take of us before we leave.
struct FeedLimits {
    std::chrono::milliseconds time{15'000}; ///< For everything, redirects included.
    qsizetype bytes = 1'048'576;            ///< Of the feed.
    int redirects = 3;
};

/// The feed, or why there is none.
using FeedAnswer = std::variant<QByteArray, UpdateCheckFailed>;

/// Fetches a feed, without ever making the caller wait. Sends no cookies, keeps nothing, and follows
/// redirects only to where it may ask.
class FeedClient final : public QObject {
    Q_OBJECT
public:
    /// `version` is the one that servers are told.
    explicit FeedClient(const QString &version, Transport transport = Transport::httpsOnly,
                        FeedLimits limits = {}, QObject *parent = nullptr);
    /// Breaks off; nothing is told any more.
    ~FeedClient() override;

    /// Fetches from `feed`; `finished` tells what came of it, never before this returns. Does nothing while a
    /// fetch is under way.
    void fetch(const QUrl &feed);

    [[nodiscard]] bool isFetching() const;

Q_SIGNALS:
    void finished(const tallyfold::FeedAnswer &answer);

private:
    struct DeleteLater {
        void operator()(QNetworkReply *reply) const;
    };

    void ask(const QUrl &url);
    void receive();
    void check();
    void settle();
    void follow(const QUrl &target);
    void leave();
    void end(const FeedAnswer &answer);
    void fail(UpdateCheckFailed::Reason reason);

    QString m_userAgent;
    Transport m_transport;
    FeedLimits m_limits;
    QNetworkAccessManager m_network;
    QTimer m_deadline;
    bool m_isFetching = false;
    int m_redirects = 0;
    QByteArray m_feed;
    std::unique_ptr<QNetworkReply, DeleteLater> m_reply; ///< Null when nobody was asked.
};

} // namespace tallyfold
