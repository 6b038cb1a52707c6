#pragma once

#include "ui/updates/AppVersion.h"
#include "ui/updates/UpdateOutcome.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

namespace tallyfold {

/// A release as an appcast announces it. What is not told is empty.
struct AppcastItem {
    /// What users call it, else what the feed compares, which is often the number of a build.
    std::optional<AppVersion> version;
    QUrl link;     ///< Where to read of it or to get it: https, with a host, without a user name.
    QString notes; ///< HTML, cut at `maxAppcastNotes`.
    QString os;    ///< What it runs on, such as "linux".
    bool operator==(const AppcastItem &) const = default;
};

inline constexpr std::size_t maxAppcastItems = 500;
inline constexpr int maxAppcastDepth = 32;           ///< Of elements in one another.
inline constexpr qsizetype maxAppcastNotes = 10'000; ///< UTF-16 units.

/// The releases in the feed `bytes`, in its order: RSS 2.0 with what Sparkle adds to it. Where an item has no
/// element for a text, the attribute of its first enclosure is taken. Releases of a channel that users have
/// to ask for are left out. Nothing when `bytes` are no such feed, declare a document type, which could
/// define entities, or have more elements or deeper ones than the limits above allow.
[[nodiscard]] std::optional<std::vector<AppcastItem>> parseAppcast(const QByteArray &bytes);

/// What the feed `bytes` means to a program of the version `current`: the newest release for this system
/// counts, wherever it stands. A feed without releases for it is up to date; one whose releases for it all
/// have versions that cannot be read is a bad feed, as is one that is no appcast.
[[nodiscard]] UpdateOutcome evaluateFeed(const QByteArray &bytes, const AppVersion &current);

} // namespace tallyfold
