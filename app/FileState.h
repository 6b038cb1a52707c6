#pragma once

#include <cstdint>
#include <filesystem>

namespace tallyfold {

/// Metadata that shows whether a file has changed, without reading it.
struct FileState {
    bool exists = false; ///< If false, all other members are 0.
    std::int64_t size = 0;
    std::int64_t seconds = 0; ///< Last modification, since 1970.
    std::int64_t nanoseconds = 0;
    std::uint64_t inode = 0; ///< Differs if the file was replaced by another.

    /// The state of the file at `location`; symbolic links are followed.
    [[nodiscard]] static FileState of(const std::filesystem::path &location);

    bool operator==(const FileState &) const = default;
};

} // namespace tallyfold
