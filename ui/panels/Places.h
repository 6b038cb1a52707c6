#pragma once

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <vector>

namespace tallyfold {

/// A folder that a user goes to often.
struct Place {
    QString title;
    std::filesystem::path folder;
    bool operator==(const Place &) const = default;
};

/// The local folders in the bookmarks of GNOME's file panels (`gtk-3.0/bookmarks`): a URI a line, and a title
/// behind it where the user gave one.
[[nodiscard]] std::vector<Place> gtkBookmarks(const QByteArray &content);

/// The local folders in those of Plasma's (`user-places.xbel`), without those that the user has hidden. As
/// far as the document can be read.
[[nodiscard]] std::vector<Place> kdePlaces(const QByteArray &content);

/// Whether what is mounted at `folder` is a user's: a stick, a disk or a share, and no part of the system.
[[nodiscard]] bool isUsersVolume(const std::filesystem::path &folder);

/// Where the user goes on this machine: home and its folders, bookmarks, what is mounted, the root. Each
/// once, and only what is there.
[[nodiscard]] std::vector<Place> usersPlaces();

} // namespace tallyfold
