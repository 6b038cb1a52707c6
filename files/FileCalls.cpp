#include "files/FileCalls.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace tallyfold::files {

FileCalls &FileCalls::system()
{
    static FileCalls calls;
    return calls;
}

int FileCalls::openAt(int folder, const char *name, int flags, mode_t mode)
{
    return ::openat(folder, name, flags, mode);
}

ssize_t FileCalls::read(int descriptor, char *bytes, std::size_t count)
{
    return ::read(descriptor, bytes, count);
}

ssize_t FileCalls::readAt(int descriptor, char *bytes, std::size_t count, off_t offset)
{
    return ::pread(descriptor, bytes, count, offset);
}

ssize_t FileCalls::write(int descriptor, const char *bytes, std::size_t count)
{
    return ::write(descriptor, bytes, count);
}

ssize_t FileCalls::copyRange(int from, off_t offset, int to, std::size_t count)
{
    return ::copy_file_range(from, &offset, to, nullptr, count, 0);
}

int FileCalls::syncData(int descriptor)
{
    return ::fdatasync(descriptor);
}

int FileCalls::sync(int descriptor)
{
    return ::fsync(descriptor);
}

int FileCalls::close(int descriptor)
{
    return ::close(descriptor);
}

int FileCalls::renameWithoutReplacing(int folder, const char *from, const char *to)
{
    return ::renameat2(folder, from, folder, to, RENAME_NOREPLACE);
}

int FileCalls::link(int folder, const char *from, const char *to)
{
    return ::linkat(folder, from, folder, to, 0);
}

int FileCalls::unlink(int folder, const char *name)
{
    return ::unlinkat(folder, name, 0);
}

int openFolder(FileCalls &calls, const std::filesystem::path &path, std::error_code &error)
{
    const int descriptor = uninterrupted(
        [&] { return calls.openAt(AT_FDCWD, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); });
    if (descriptor < 0) {
        error = {errno, std::generic_category()};
    }
    return descriptor;
}

std::error_code syncFolder(FileCalls &calls, int folder)
{
    if (uninterrupted([&] { return calls.sync(folder); }) == 0 || errno == EINVAL || errno == ENOTSUP) {
        return {};
    }
    return {errno, std::generic_category()};
}

std::size_t readUpTo(FileCalls &calls, int descriptor, std::uint64_t offset, std::span<char> bytes,
                     std::error_code &error)
{
    std::size_t have = 0;
    while (have < bytes.size()) {
        const ssize_t got = uninterrupted([&] {
            return calls.readAt(descriptor, bytes.data() + have, bytes.size() - have,
                                static_cast<off_t>(offset + have));
        });
        if (got < 0) {
            error = {errno, std::generic_category()};
        }
        if (got <= 0) {
            break;
        }
        have += static_cast<std::size_t>(got);
    }
    return have;
}

} // namespace tallyfold::files
