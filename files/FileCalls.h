#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <sys/types.h>
#include <system_error>

namespace tallyfold::files {

/// The system calls that create, fill, publish and remove files, as virtual functions, so that a test can
/// make any one of them fail. Each gives what the system call of its name gives: −1 on failure, with the
/// reason in `errno`. None restarts after a signal: see `uninterrupted`.
class FileCalls {
public:
    virtual ~FileCalls() = default;

    /// The real system calls.
    [[nodiscard]] static FileCalls &system();

    [[nodiscard]] virtual int openAt(int folder, const char *name, int flags, mode_t mode);
    [[nodiscard]] virtual ssize_t read(int descriptor, char *bytes, std::size_t count);
    /// pread, which leaves the file offset unchanged.
    [[nodiscard]] virtual ssize_t readAt(int descriptor, char *bytes, std::size_t count, off_t offset);
    [[nodiscard]] virtual ssize_t write(int descriptor, const char *bytes, std::size_t count);
    /// copy_file_range from `offset` of the file `from` to the file offset of `to`.
    [[nodiscard]] virtual ssize_t copyRange(int from, off_t offset, int to, std::size_t count);
    /// fdatasync: the data and the metadata that reading it needs.
    [[nodiscard]] virtual int syncData(int descriptor);
    /// fsync, for folders.
    [[nodiscard]] virtual int sync(int descriptor);
    [[nodiscard]] virtual int close(int descriptor);
    /// renameat2 with RENAME_NOREPLACE: EEXIST when `to` exists, a dangling link included.
    [[nodiscard]] virtual int renameWithoutReplacing(int folder, const char *from, const char *to);
    [[nodiscard]] virtual int link(int folder, const char *from, const char *to);
    [[nodiscard]] virtual int unlink(int folder, const char *name);
};

/// The result of `call`, repeated as long as a signal interrupts it.
template <typename Call> [[nodiscard]] auto uninterrupted(const Call &call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// Opens the folder at `path`, so that files can be made in it; its descriptor, or -1 when `error` says why
/// there is none.
[[nodiscard]] int openFolder(FileCalls &calls, const std::filesystem::path &path, std::error_code &error);

/// Flushes the names in the open folder `folder` to the disk. No error where a file system, such as one
/// across a network, has no way to do that.
[[nodiscard]] std::error_code syncFolder(FileCalls &calls, int folder);

/// Fills `bytes` with what lies at `offset` of the open file `descriptor`, and gives how many there were:
/// fewer only where the file ends, or where `error` says why it cannot be read.
[[nodiscard]] std::size_t readUpTo(FileCalls &calls, int descriptor, std::uint64_t offset,
                                   std::span<char> bytes, std::error_code &error);

} // namespace tallyfold::files
