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

} // namespace tallyfold::files
