#pragma once

#include <QUrl>

#include <optional>

namespace tallyfold {

/// How a feed may travel.
enum class Transport {
    httpsOnly,
    alsoPlainLocal, ///< Also unencrypted from this very computer, which is for tests.
};

/// Whether `url` is one that `transport` lets us ask.
[[nodiscard]] bool mayAsk(const QUrl &url, Transport transport);

/// Where to ask next when `from` sends us to `target`, which may be relative; nothing when we do not go
/// there.
[[nodiscard]] std::optional<QUrl> nextHop(const QUrl &from, const QUrl &target, Transport transport);

} // namespace tallyfold
