#pragma once

#include <QString>
#include <QUrl>

#include <variant>

namespace tallyfold {

/// There is nothing newer.
struct UpToDate {
    bool operator==(const UpToDate &) const = default;
};

/// There is something newer.
struct NewerVersion {
    QString version;
    QString notes; ///< Plain text, to be shown as such; may be empty.
    QUrl link;     ///< Where to get it: https, or empty.
    bool operator==(const NewerVersion &) const = default;
};

/// It could not be found out.
struct UpdateCheckFailed {
    enum class Reason {
        noFeed,          ///< There is no address to ask, or none that may be asked.
        noConnection,    ///< No server answered there, or it broke off.
        refusedRedirect, ///< The server sent us somewhere we do not go, or round and round.
        tooLarge,        ///< The answer is longer than any feed.
        tooSlow,         ///< The answer was not there in time.
        badFeed,         ///< The answer cannot be read.
        serverError,     ///< The server has no feed for us.
    };
    Reason reason = Reason::noFeed;
    bool operator==(const UpdateCheckFailed &) const = default;
};

/// What came of a check for updates.
using UpdateOutcome = std::variant<UpToDate, NewerVersion, UpdateCheckFailed>;

} // namespace tallyfold
