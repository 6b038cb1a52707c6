#pragma once

#include "core/SourceFile.h"

#include <QSet>
#include <QUuid>

#include <filesystem>
#include <set>
#include <span>
#include <vector>

namespace tallyfold {

/// The `locations` that `sources` does not contain under any spelling of the path, each once, in order.
[[nodiscard]] std::vector<std::filesystem::path>
newLocations(const std::vector<SourceFile> &sources, std::span<const std::filesystem::path> locations);

/// `sources` without those with one of `ids`, in order.
[[nodiscard]] std::vector<SourceFile> without(const std::vector<SourceFile> &sources, const QSet<QUuid> &ids);

/// `rows` with the rows at the indices `from` moved, in order, to before the row at index `to` (the number of
/// rows for the end). Indices out of range are ignored.
[[nodiscard]] std::vector<SourceFile> moved(const std::vector<SourceFile> &rows,
                                            const std::set<std::int64_t> &from, std::int64_t to);

/// The identifiers of `sources`.
[[nodiscard]] QSet<QUuid> idsOf(const std::vector<SourceFile> &sources);

} // namespace tallyfold
