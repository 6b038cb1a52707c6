#include "files/ExclusiveMove.h"

#include "files/FileSink.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <system_error>

namespace tallyfold::files::ExclusiveMove {

namespace {

/// Copies all of `source` into `sink` and syncs it; 0 or the error number.
int copyBytes(FileCalls &calls, int source, FileSink &sink)
{
    std::array<char, 64 * 1024> buffer{};
    while (true) {
        const ssize_t count = uninterrupted([&] { return calls.read(source, buffer.data(), buffer.size()); });
        if (count < 0) {
            return errno;
        }
        const bool succeeded = count == 0
                                   ? sink.flushToDisk()
                                   : sink.write(std::span(buffer.data(), static_cast<std::size_t>(count)));
        if (count == 0 || !succeeded) {
            return sink.failure().value();
        }
    }
}

void remove(FileCalls &calls, int folder, const std::string &name)
{
    (void)uninterrupted([&] { return calls.unlink(folder, name.c_str()); });
}

} // namespace

int byRenaming(FileCalls &calls, int folder, const std::string &from, const std::string &to)
{
    const int renamed =
        uninterrupted([&] { return calls.renameWithoutReplacing(folder, from.c_str(), to.c_str()); });
    return renamed == 0 ? 0 : errno;
}

int byLinking(FileCalls &calls, int folder, const std::string &from, const std::string &to)
{
    if (uninterrupted([&] { return calls.link(folder, from.c_str(), to.c_str()); }) != 0) {
        return errno;
    }
    remove(calls, folder, from);
    return 0;
}

int byCopying(FileCalls &calls, int folder, const std::string &from, const std::string &to)
{
    const int source = uninterrupted(
        [&] { return calls.openAt(folder, from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC, 0); });
    if (source < 0) {
        return errno;
    }
    std::error_code refusal;
    const std::unique_ptr<FileSink> sink = FileSink::create(folder, to, calls, refusal);
    const int error = sink ? copyBytes(calls, source, *sink) : refusal.value();
    (void)calls.close(source);
    if (sink) { // Without a sink, the file `to` is not this function's.
        remove(calls, folder, error == 0 ? from : to);
    }
    return error;
}

int move(FileCalls &calls, int folder, const std::string &from, const std::string &to)
{
    int error = byRenaming(calls, folder, from, to);
    if (error == EINVAL || error == ENOSYS || error == ENOTSUP) {
        error = byLinking(calls, folder, from, to);
        if (error == EPERM || error == ENOSYS || error == ENOTSUP || error == EMLINK) {
            error = byCopying(calls, folder, from, to);
        }
    }
    return error;
}

} // namespace tallyfold::files::ExclusiveMove
