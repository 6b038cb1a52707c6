#pragma once

#include "files/Descriptor.h"

#include <cstddef>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace tallyfold::fuzz {

/// A file that lives in memory for as long as this does.
class FileInMemory {
public:
    /// A file of these bytes; `isSound` is false where there is no room for them.
    FileInMemory(const void *bytes, std::size_t size)
        : m_isSound(::write(m_file.number(), bytes, size) == static_cast<ssize_t>(size))
    {
    }

    [[nodiscard]] bool isSound() const
    {
        return m_isSound;
    }
    [[nodiscard]] int descriptor() const
    {
        return m_file.number();
    }
    /// A name it can be opened by.
    [[nodiscard]] std::string path() const
    {
        return "/proc/self/fd/" + std::to_string(m_file.number());
    }

private:
    files::Descriptor m_file{::memfd_create("input", MFD_CLOEXEC)};
    bool m_isSound;
};

} // namespace tallyfold::fuzz
