#pragma once

#include "core/check/Finding.h"
#include "core/check/HashLines.h"
#include "core/check/IndexContents.h"

#include <QString>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <vector>

namespace tallyfold::check {

/// A finished production: its folder as it is listed, and its index.
struct ProductionFolder {
    /// A copy and where it is.
    struct Copy {
        IndexedCopy indexed;
        std::filesystem::path path; ///< Empty when it is not there.
    };

    static inline const QString hashListName = QStringLiteral("Production Hashes.sha256");

    std::filesystem::path path;
    std::filesystem::path index;     ///< Its file; empty when there is none.
    std::optional<HashLines> hashes; ///< Absent when there is no list, or none that can be read.
    std::vector<Copy> copies;        ///< In the order of the index.
    std::vector<Finding> findings;   ///< All that can be told without reading the copies.

    /// Reads the folder at `path`, the one with this index among those that are checked.
    [[nodiscard]] static ProductionFolder of(const std::filesystem::path &path, std::size_t folder);

    /// Whether the file at `file`, one of the folder, is what the list of hashes tells of; nothing to tell
    /// where there is no list, or no reading the file.
    [[nodiscard]] std::optional<Finding::What> changeOf(const std::filesystem::path &file,
                                                        const std::stop_token &givenUp = {}) const;
};

} // namespace tallyfold::check
