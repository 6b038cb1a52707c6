#pragma once

#include "ui/updates/UpdateOutcome.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <variant>

namespace tallyfold {

/// The transports allowed for a feed.
enum class Transport {
    httpsOnly,
    alsoPlainLocal, ///< Also unencrypted from the local host, for tests.
};

/// The limits of a request.
struct FeedLimits {
    std::chrono::milliseconds time{15'000}; ///< In total, including redirects.
    /// Size of the feed. The XML reader compares each attribute of a tag with every other, which takes less
    /// than a second for this size.
    qsizetype bytes = 131'072;
    int redirects = 3;
};

/// A feed and the conditions of fetching it.
struct FeedRequest {
    QUrl feed;       ///< Empty for none.
    QString version; ///< Version of this program, sent in the User-Agent header.
    Transport transport = Transport::httpsOnly;
    FeedLimits limits;
};

/// The feed, or why it is not available.
using FeedAnswer = std::variant<QByteArray, UpdateCheckFailed>;

/// Fetches a feed asynchronously: `finished` is called once, never before this returns, and not at all if
/// `parent` is destroyed before. Sends no cookies, stores nothing, and follows redirects only to addresses
/// that the request allows.
void fetchFeed(const FeedRequest &request, QObject &parent, std::function<void(const FeedAnswer &)> finished);

} // namespace tallyfold
