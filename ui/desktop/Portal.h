#pragma once

#include <QString>

namespace tallyfold::portal {

/// Where the desktop portals are reached on the session's bus.
inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace tallyfold::portal
