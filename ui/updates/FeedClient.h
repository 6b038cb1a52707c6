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

/// How a feed may travel.
enum class Transport {
    httpsOnly,
    alsoPlainLocal, ///< Also unencrypted from this very computer, which is for tests.
};

/// What a server may take of us before we leave.
struct FeedLimits {
    std::chrono::milliseconds time{15'000}; ///< For everything, redirects included.
    /// Of the feed. The XML reader compares each attribute of a tag with every other: of so many bytes in
    /// less than a second.
    qsizetype bytes = 131'072;
    int redirects = 3;
};

/// Where a feed is, and how it may be fetched.
struct FeedRequest {
    QUrl feed;       ///< Empty: nowhere.
    QString version; ///< Of this program, which servers are told.
    Transport transport = Transport::httpsOnly;
    FeedLimits limits;
};

/// The feed, or why there is none.
using FeedAnswer = std::variant<QByteArray, UpdateCheckFailed>;

/// Fetches a feed without making the caller wait: `finished` is called once and never before this returns, or
/// not at all when `parent` goes before. No cookies are sent, nothing is kept, and redirects are followed
/// only to where the request may ask.
void fetchFeed(const FeedRequest &request, QObject &parent, std::function<void(const FeedAnswer &)> finished);

} // namespace tallyfold
