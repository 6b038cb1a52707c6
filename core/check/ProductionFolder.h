#pragma once

#include "core/check/Finding.h"
#include "core/check/IndexContents.h"

#include <QString>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

namespace tallyfold::check {

/// A finished production: its folder as it is listed, and its index.
struct ProductionFolder {
    /// A copy and where it is.
    struct Copy {
        IndexedCopy indexed;
        std::filesystem::path path; ///< Empty when it is not there.
    };

    std::filesystem::path path;
    std::vector<Copy> copies;      ///< In the order of the index.
    std::vector<Finding> findings; ///< All that can be told without reading the copies.

    /// Reads the folder at `path`, the one with this index among those that are checked.
    [[nodiscard]] static ProductionFolder of(const std::filesystem::path &path, std::size_t folder);
};

} // namespace tallyfold::check
