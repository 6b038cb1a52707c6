#include "ui/updates/FeedSettings.h"

namespace tallyfold {

FeedSettings FeedSettings::ours()
{
    return {QUrl(QStringLiteral(TALLYFOLD_FEED_URL)),
            AppVersion::parse(QStringLiteral(TALLYFOLD_VERSION)).value_or(AppVersion())};
}

} // namespace tallyfold
