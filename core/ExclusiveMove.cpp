#include "core/ExclusiveMove.h"

#include "pdf/FileSink.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace tallyfold::ExclusiveMove {

namespace {

/// Copies all of `source` into `sink`; 0 or the error number.
int copyBytes(int source, pdf::FileSink &sink)
{
    std::array<char, 64 * 1024> buffer{};
    while (true) {
        const ssize_t count = ::read(source, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return errno;
        }
        if (count == 0) {
            return sink.finish() && sink.flushToDisk() ? 0 : EIO;
        }
        if (!sink.write(std::span(buffer.data(), static_cast<std::size_t>(count)))) {
            return EIO;
        }
    }
}

} // namespace

int byRenaming(int folder, const std::string &from, const std::string &to)
{
    return ::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
}

int byLinking(int folder, const std::string &from, const std::string &to)
{
    if (::linkat(folder, from.c_str(), folder, to.c_str(), 0) != 0) {
        return errno;
    }
    // Both names are the same finished file now: a first name that stays is untidy, and nothing worse.
    (void)::unlinkat(folder, from.c_str(), 0);
    return 0;
}

int byCopying(int folder, const std::string &from, const std::string &to)
{
    const int source = ::openat(folder, from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (source < 0) {
        return errno;
    }
    const int target =
        ::openat(folder, to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (target < 0) {
        const int error = errno;
        ::close(source);
        return error;
    }
    pdf::FileSink sink(target);
    const int error = copyBytes(source, sink);
    ::close(source);
    (void)::unlinkat(folder, error == 0 ? from.c_str() : to.c_str(), 0);
    return error;
}

int move(int folder, const std::string &from, const std::string &to)
{
    int error = byRenaming(folder, from, to);
    if (error == EINVAL || error == ENOSYS || error == ENOTSUP) {
        error = byLinking(folder, from, to);
        if (error == EPERM || error == ENOSYS || error == ENOTSUP || error == EMLINK) {
            error = byCopying(folder, from, to);
        }
    }
    return error;
}

} // namespace tallyfold::ExclusiveMove
