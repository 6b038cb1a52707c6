#include "files/FileStatus.h"

#include <cerrno>
#include <sys/stat.h>

namespace tallyfold::files {

namespace {

FileTime timeOf(const timespec &time)
{
    return {time.tv_sec, time.tv_nsec};
}

FileStatus statusOf(const struct stat &status)
{
    using Kind = FileStatus::Kind;
    const Kind kind = S_ISREG(status.st_mode)   ? Kind::regular
                      : S_ISDIR(status.st_mode) ? Kind::folder
                                                : Kind::other;
    return {kind, status.st_size, timeOf(status.st_mtim), timeOf(status.st_ctim), status.st_ino};
}

} // namespace

std::optional<FileStatus> FileStatus::of(const std::filesystem::path &path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? std::optional(statusOf(status)) : std::nullopt;
}

std::optional<FileStatus> FileStatus::of(int descriptor, std::error_code &error)
{
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        error = {errno, std::generic_category()};
        return std::nullopt;
    }
    return statusOf(status);
}

} // namespace tallyfold::files
