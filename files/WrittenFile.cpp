#include "files/WrittenFile.h"

#include <algorithm>
#include <fcntl.h>

namespace tallyfold::files {

std::unique_ptr<WrittenFile> WrittenFile::open(int folder, const std::string &name, std::uint64_t size,
                                               FileCalls &calls)
{
    const int descriptor = uninterrupted([&] {
        return calls.openAt(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, 0);
    });
    return descriptor < 0 ? nullptr : std::unique_ptr<WrittenFile>(new WrittenFile(descriptor, size, calls));
}

WrittenFile::WrittenFile(int descriptor, std::uint64_t size, FileCalls &calls)
    : m_descriptor(descriptor), m_size(size), m_calls(calls)
{
}

WrittenFile::~WrittenFile()
{
    static_cast<void>(m_calls.close(m_descriptor));
}

std::uint64_t WrittenFile::size() const
{
    return m_size;
}

bool WrittenFile::read(std::uint64_t offset, std::span<char> bytes) const
{
    return readUpTo(offset, bytes) == bytes.size();
}

bool WrittenFile::readEnd(std::uint64_t count, std::string &bytes) const
{
    const std::uint64_t length = std::min(count, m_size);
    bytes.resize(length + 1); // One more, to see whether the file is longer.
    const std::size_t got = readUpTo(m_size - length, bytes);
    bytes.resize(length);
    return got == length;
}

std::size_t WrittenFile::readUpTo(std::uint64_t offset, std::span<char> bytes) const
{
    std::error_code error; // A file that cannot be read is as wrong as a short one.
    return files::readUpTo(m_calls, m_descriptor, offset, bytes, error);
}

} // namespace tallyfold::files
