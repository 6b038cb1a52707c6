#pragma once

#include "core/SourceFile.h"

#include <QSet>
#include <QUuid>

#include <filesystem>
#include <set>
#include <span>
#include <vector>

namespace tallyfold {

/// Those of `locations` that are in `sources` under no spelling of their path, each once, in their order.
[[nodiscard]] std::vector<std::filesystem::path>
newLocations(const std::vector<SourceFile> &sources, std::span<const std::filesystem::path> locations);

/// `sources` without those of `ids`, in their order.
[[nodiscard]] std::vector<SourceFile> without(const std::vector<SourceFile> &sources, const QSet<QUuid> &ids);

/// `rows` with those at the places `from` moved, in their order, to before the row that is at place `to` (the
/// number of rows for the end). Places that are not in the list are passed over.
[[nodiscard]] std::vector<SourceFile> moved(const std::vector<SourceFile> &rows,
                                            const std::set<std::int64_t> &from, std::int64_t to);

/// The identifiers of `sources`.
[[nodiscard]] QSet<QUuid> idsOf(const std::vector<SourceFile> &sources);

} // namespace tallyfold
