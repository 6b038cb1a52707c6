#pragma once

#include "ui/updates/UpdateOutcome.h"

#include <QString>
#include <QUrl>

namespace tallyfold {

/// What is said of a check for updates.
struct UpdateMessage {
    QString title;
    QString text;      ///< Plain text, partly from the feed: to be shown as such.
    QUrl link;         ///< Empty when there is none.
    QString linkTitle; ///< Of the button that opens it; empty when there is none.

    bool operator==(const UpdateMessage &) const = default;
};

[[nodiscard]] UpdateMessage updateMessageOf(const UpdateOutcome &outcome);

} // namespace tallyfold
