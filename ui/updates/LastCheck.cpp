#include "ui/updates/LastCheck.h"

namespace tallyfold {

bool isCheckDue(const std::optional<QDateTime> &last, const QDateTime &now)
{
    constexpr qint64 day = 86'400; // Seconds.
    return !last || !last->isValid() || *last > now || last->secsTo(now) >= day;
}

} // namespace tallyfold
