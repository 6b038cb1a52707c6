#include "ui/updates/Transport.h"

#include <QHostAddress>

namespace tallyfold {

bool mayAsk(const QUrl &url, Transport transport)
{
    if (!url.isValid() || url.host().isEmpty()) {
        return false;
    }
    if (url.scheme() == QStringLiteral("https")) {
        return true;
    }
    return transport == Transport::alsoPlainLocal && url.scheme() == QStringLiteral("http") &&
           QHostAddress(url.host()).isLoopback();
}

std::optional<QUrl> nextHop(const QUrl &from, const QUrl &target, Transport transport)
{
    const QUrl next = from.resolved(target);
    return !target.isEmpty() && mayAsk(next, transport) ? std::optional(next) : std::nullopt;
}

} // namespace tallyfold
