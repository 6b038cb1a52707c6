#pragma once

#include <cstddef>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace tallyfold::fuzz {

/// A file that lives in memory for as long as this does.
class FileInMemory {
public:
    /// A file of these bytes; `isSound` is false where there is no room for them.
    FileInMemory(const void *bytes, std::size_t size) : m_descriptor(::memfd_create("input", MFD_CLOEXEC))
    {
        m_isSound = m_descriptor >= 0 && ::write(m_descriptor, bytes, size) == static_cast<ssize_t>(size);
    }
    ~FileInMemory()
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    FileInMemory(const FileInMemory &) = delete;
    FileInMemory &operator=(const FileInMemory &) = delete;

    [[nodiscard]] bool isSound() const
    {
        return m_isSound;
    }
    [[nodiscard]] int descriptor() const
    {
        return m_descriptor;
    }
    /// A name it can be opened by.
    [[nodiscard]] std::string path() const
    {
        return "/proc/self/fd/" + std::to_string(m_descriptor);
    }

private:
    int m_descriptor;
    bool m_isSound = false;
};

} // namespace tallyfold::fuzz
