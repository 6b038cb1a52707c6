#pragma once

#include <QString>

namespace tallyfold::portal {

/// The address of the desktop portals on the session bus.
inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace tallyfold::portal
