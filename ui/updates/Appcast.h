#pragma once

#include "ui/updates/AppVersion.h"
#include "ui/updates/UpdateOutcome.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

namespace tallyfold {

/// A release in an appcast. Missing values are empty.
struct AppcastItem {
    /// The version shown to users, else the version for comparisons, which often is a build number.
    std::optional<AppVersion> version;
    QUrl link;     ///< Its web page or download: https, with a host, without user information.
    QString notes; ///< HTML, truncated to `maxAppcastNotes`.
    QString os;    ///< The operating system, such as "linux".
    bool operator==(const AppcastItem &) const = default;
};

inline constexpr std::size_t maxAppcastItems = 500;
inline constexpr int maxAppcastDepth = 32;           ///< Nesting depth of elements.
inline constexpr qsizetype maxAppcastNotes = 10'000; ///< UTF-16 code units.

/// The releases in the feed `bytes`, in order: RSS 2.0 with the extensions of Sparkle. A missing element is
/// replaced by the attribute of the first enclosure. Releases in optional channels are omitted. Nothing if
/// `bytes` are not such a feed, declare a document type, which could define entities, or exceed the limits
/// above.
[[nodiscard]] std::optional<std::vector<AppcastItem>> parseAppcast(const QByteArray &bytes);

/// The outcome of the feed `bytes` for the version `current`. The newest release for this system counts,
/// regardless of its position. A feed without such releases means up to date; a feed in which none of them
/// has a valid version, or which is not an appcast, is a bad feed.
[[nodiscard]] UpdateOutcome evaluateFeed(const QByteArray &bytes, const AppVersion &current);

} // namespace tallyfold
