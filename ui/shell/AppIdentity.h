#pragma once

#include <QString>

/// The names by which the desktop knows the program.
namespace tallyfold::identity {

/// Reverse domain name: of the desktop entry, the bus name and the icon.
inline const QString id = QStringLiteral("example.tallyfold.Tallyfold");
/// The same as a D-Bus object path.
inline const QString objectPath = QStringLiteral("/example/tallyfold/Tallyfold");

} // namespace tallyfold::identity
