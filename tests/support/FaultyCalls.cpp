#include "tests/support/FaultyCalls.h"

#include <cerrno>

namespace tallyfold::tests {

const std::vector<FileCall> &FaultyCalls::calls() const
{
    return m_calls;
}

bool FaultyCalls::fails(const char *kind, const char *name)
{
    m_calls.push_back({kind, name, static_cast<int>(m_calls.size())});
    const int error = rule(m_calls.back());
    if (error != 0) {
        errno = error;
    }
    return error != 0;
}

int FaultyCalls::openAt(int folder, const char *name, int flags, mode_t mode)
{
    return fails("open", name) ? -1 : files::FileCalls::openAt(folder, name, flags, mode);
}

ssize_t FaultyCalls::read(int descriptor, char *bytes, std::size_t count)
{
    return fails("read") ? -1 : files::FileCalls::read(descriptor, bytes, count);
}

ssize_t FaultyCalls::readAt(int descriptor, char *bytes, std::size_t count, off_t offset)
{
    return fails("readAt") ? -1 : files::FileCalls::readAt(descriptor, bytes, count, offset);
}

ssize_t FaultyCalls::write(int descriptor, const char *bytes, std::size_t count)
{
    return fails("write") ? -1 : files::FileCalls::write(descriptor, bytes, count);
}

ssize_t FaultyCalls::copyRange(int from, off_t offset, int to, std::size_t count)
{
    return fails("copy") ? -1 : files::FileCalls::copyRange(from, offset, to, count);
}

int FaultyCalls::syncData(int /*descriptor*/)
{
    return fails("syncData") ? -1 : 0;
}

int FaultyCalls::sync(int /*descriptor*/)
{
    return fails("sync") ? -1 : 0;
}

int FaultyCalls::close(int descriptor)
{
    const int closed = files::FileCalls::close(descriptor);
    return fails("close") ? -1 : closed;
}

int FaultyCalls::renameWithoutReplacing(int folder, const char *from, const char *to)
{
    return fails("rename", to) ? -1 : files::FileCalls::renameWithoutReplacing(folder, from, to);
}

int FaultyCalls::link(int folder, const char *from, const char *to)
{
    return fails("link", to) ? -1 : files::FileCalls::link(folder, from, to);
}

int FaultyCalls::unlink(int folder, const char *name)
{
    return fails("unlink", name) ? -1 : files::FileCalls::unlink(folder, name);
}

} // namespace tallyfold::tests
