#pragma once

#include "ui/updates/AppVersion.h"

#include <QUrl>

namespace tallyfold {

/// Where newer versions are told of, and what they have to be newer than.
struct FeedSettings {
    QUrl feed; ///< Empty: nowhere.
    AppVersion current;

    /// Those this program was built with.
    [[nodiscard]] static FeedSettings ours();
};

} // namespace tallyfold
