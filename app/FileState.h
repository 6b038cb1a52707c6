#pragma once

#include <cstdint>
#include <filesystem>

namespace tallyfold {

/// What tells one state of a file from another without reading it.
struct FileState {
    bool exists = false; ///< Whether it can be found. The rest is 0 if not.
    std::int64_t size = 0;
    std::int64_t seconds = 0; ///< Since 1970, when its content was last changed,
    std::int64_t nanoseconds = 0;
    std::uint64_t inode = 0; ///< Another one where a file was put in its place.

    /// Of the file that `location` leads to.
    [[nodiscard]] static FileState of(const std::filesystem::path &location);

    bool operator==(const FileState &) const = default;
};

} // namespace tallyfold
