#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

namespace tallyfold::files {

/// A point in time as exact as file systems keep it.
struct FileTime {
    std::int64_t seconds = 0;     ///< Since the beginning of 1970, UTC.
    std::int64_t nanoseconds = 0; ///< Of the second: 0 to 999,999,999.

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 means the 0 that the compiler compares with.
    auto operator<=>(const FileTime &) const = default;
};

/// What the system says of a file without reading it.
struct FileStatus {
    enum class Kind {
        regular,
        folder,
        other, ///< A pipe, a socket, a device.
    };
    Kind kind = Kind::regular;
    std::int64_t size = 0; ///< Bytes.
    FileTime modified;     ///< When its content was last changed.
    FileTime changed;      ///< When that, its name or its permissions were.
    std::uint64_t inode = 0;

    /// Of the file that `path` leads to, through links; nothing when there is none that may be looked at.
    [[nodiscard]] static std::optional<FileStatus> of(const std::filesystem::path &path);

    /// Of the open file `descriptor`; nothing when `error` says why not.
    [[nodiscard]] static std::optional<FileStatus> of(int descriptor, std::error_code &error);

    bool operator==(const FileStatus &) const = default;
};

} // namespace tallyfold::files
