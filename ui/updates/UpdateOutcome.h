#pragma once

#include <QString>
#include <QUrl>

#include <variant>

namespace tallyfold {

/// There is no newer version.
struct UpToDate {
    bool operator==(const UpToDate &) const = default;
};

/// There is a newer version.
struct NewerVersion {
    QString version;
    QString notes; ///< Plain text, must not be shown as markup; may be empty.
    QUrl link;     ///< Its address: https, or empty.
    bool operator==(const NewerVersion &) const = default;
};

/// The check failed.
struct UpdateCheckFailed {
    enum class Reason {
        noFeed,          ///< There is no feed address, or it is not allowed.
        noConnection,    ///< The server did not answer, or the connection broke.
        refusedRedirect, ///< The redirect is not allowed, or there are too many.
        tooLarge,        ///< The answer exceeds the size limit.
        tooSlow,         ///< The answer did not arrive in time.
        badFeed,         ///< The answer is not a valid feed.
        serverError,     ///< The server returned an error status.
    };
    Reason reason = Reason::noFeed;
    bool operator==(const UpdateCheckFailed &) const = default;
};

/// The result of a check for updates.
using UpdateOutcome = std::variant<UpToDate, NewerVersion, UpdateCheckFailed>;

} // namespace tallyfold
