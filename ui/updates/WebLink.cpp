#include "ui/updates/WebLink.h"

namespace tallyfold {

QUrl webLinkOf(QStringView text)
{
    const QUrl url(text.trimmed().toString(), QUrl::StrictMode);
    const bool isFit = url.isValid() && url.scheme() == QStringLiteral("https") && !url.host().isEmpty() &&
                       url.userInfo().isEmpty();
    return isFit ? url : QUrl();
}

} // namespace tallyfold
