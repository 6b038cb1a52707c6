#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <filesystem>
#include <vector>

namespace tallyfold {

/// The local files in a `text/uri-list` (RFC 2483), in order. Names are bytes and need not be valid UTF-8
/// once decoded. Comments, other schemes, other hosts and relative paths are ignored.
[[nodiscard]] std::vector<std::filesystem::path> localPathsIn(QByteArrayView uriList);

/// The URI of a local file, with all bytes but unreserved characters and slashes percent-encoded.
[[nodiscard]] QByteArray fileUri(const std::filesystem::path &path);

/// The URIs of `paths` as a `text/uri-list`.
[[nodiscard]] QByteArray uriListOf(const std::vector<std::filesystem::path> &paths);

} // namespace tallyfold
