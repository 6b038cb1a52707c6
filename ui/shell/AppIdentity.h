#pragma once

#include <QString>

/// The identifiers of the program on the desktop.
namespace tallyfold::identity {

/// Reverse domain name, used for the desktop entry, the bus name and the icon.
inline const QString id = QStringLiteral("example.tallyfold.Tallyfold");
/// The identifier as a D-Bus object path.
inline const QString objectPath = QStringLiteral("/example/tallyfold/Tallyfold");

} // namespace tallyfold::identity
