#pragma once

#include "ui/updates/UpdateOutcome.h"

#include <QString>
#include <QUrl>

namespace tallyfold {

/// The message about the result of a check for updates.
struct UpdateMessage {
    QString title;
    QString text;      ///< Plain text, partly from the feed; must not be shown as markup.
    QUrl link;         ///< Empty if there is none.
    QString linkTitle; ///< Title of the button that opens it; empty if there is none.

    bool operator==(const UpdateMessage &) const = default;
};

[[nodiscard]] UpdateMessage updateMessageOf(const UpdateOutcome &outcome);

} // namespace tallyfold
