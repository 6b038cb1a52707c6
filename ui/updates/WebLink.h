#pragma once

#include <QStringView>
#include <QUrl>

namespace tallyfold {

/// The web address that `text` writes, if a browser may be sent there: https, with a host, and with no user
/// name that could be mistaken for one. Empty otherwise.
[[nodiscard]] QUrl webLinkOf(QStringView text);

} // namespace tallyfold
