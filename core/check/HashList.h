#pragma once

#include "core/check/ProductionCheck.h"

#include <QString>

#include <cstdint>
#include <filesystem>
#include <span>
#include <stop_token>
#include <system_error>
#include <variant>
#include <vector>

/// Lists of SHA-256 digests, by which anybody can tell whether a production is still what it was.
namespace tallyfold::check {

inline const QString hashTableName = QStringLiteral("Production Hashes.csv");

/// A list was written.
struct HashesWritten {
    std::int64_t files = 0; ///< That it tells of.
    /// Names of originals whose cells are empty, as none or more than one was found.
    std::vector<QString> missingOriginals;
    std::vector<QString> ambiguousOriginals;
    bool operator==(const HashesWritten &) const = default;
};
/// Nothing was written.
struct HashesNotWritten {
    QString file; ///< What could not be read or written.
    std::error_code
        error; ///< `operation_canceled` after a stop, `file_exists` where there is a list already.
    bool operator==(const HashesNotWritten &) const = default;
};
using HashesOutcome = std::variant<HashesWritten, HashesNotWritten>;

/// Writes `hashListName` into the finished production `folder`, for `sha256sum -c` and its like: its copies
/// in production order, then its index; not the privilege log, which is there to be filled in. Nothing is
/// ever replaced, and there is a list of all files or none.
[[nodiscard]] HashesOutcome writeHashList(const std::filesystem::path &folder, const ShowProgress &show = {},
                                          const std::stop_token &givenUp = {});

/// Writes `hashTableName` likewise: a row for each copy, with the digest of its original, which is looked for
/// by its name in `originals`, folders that are searched to any depth.
[[nodiscard]] HashesOutcome writeHashTable(const std::filesystem::path &folder,
                                           std::span<const std::filesystem::path> originals,
                                           const ShowProgress &show = {},
                                           const std::stop_token &givenUp = {});

} // namespace tallyfold::check
