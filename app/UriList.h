#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <filesystem>
#include <vector>

namespace tallyfold {

/// The local files that a `text/uri-list` (RFC 2483) names, in its order. Names are bytes: what is
/// percent-encoded in it need not be valid text. Comments, other schemes, other machines and what is no
/// absolute path are passed over.
[[nodiscard]] std::vector<std::filesystem::path> localPathsIn(QByteArrayView uriList);

/// The URI of a local file, every byte percent-encoded that is not plain.
[[nodiscard]] QByteArray fileUri(const std::filesystem::path &path);

/// The URIs of `paths` as a `text/uri-list`.
[[nodiscard]] QByteArray uriListOf(const std::vector<std::filesystem::path> &paths);

} // namespace tallyfold
