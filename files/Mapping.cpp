#include "files/Mapping.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <utility>

namespace tallyfold::files {

Mapping::Mapping(std::span<std::uint8_t> bytes) : m_bytes(bytes) {}

Mapping::~Mapping()
{
    if (!m_bytes.empty()) {
        ::munmap(m_bytes.data(), m_bytes.size());
    }
}

Mapping::Mapping(Mapping &&other) noexcept : m_bytes(std::exchange(other.m_bytes, {})) {}

Mapping &Mapping::operator=(Mapping &&other) noexcept
{
    std::swap(m_bytes, other.m_bytes);
    return *this;
}

std::optional<Mapping> Mapping::mapped(std::size_t size, int flags, int descriptor)
{
    void *memory =
        size == 0 ? MAP_FAILED : ::mmap(nullptr, size, PROT_READ | PROT_WRITE, flags, descriptor, 0);
    return memory == MAP_FAILED
               ? std::nullopt
               : std::optional(Mapping(std::span(static_cast<std::uint8_t *>(memory), size)));
}

std::optional<Mapping> Mapping::ofMemory(std::size_t size)
{
    std::optional<Mapping> memory = mapped(size, MAP_PRIVATE | MAP_ANONYMOUS, -1);
    if (memory) {
        // Huge pages, where the system has them: faulting thousands of small ones in takes as long as
        // copying a picture. Advice that is not followed only costs time.
        ::madvise(memory->m_bytes.data(), size, MADV_HUGEPAGE);
    }
    return memory;
}

std::optional<Mapping> Mapping::sharedWith(int descriptor, std::size_t size)
{
    struct stat status {};
    const bool hasAll = ::fstat(descriptor, &status) == 0 && status.st_size >= 0 &&
                        static_cast<std::size_t>(status.st_size) >= size;
    return hasAll ? mapped(size, MAP_SHARED | MAP_POPULATE, descriptor) : std::nullopt;
}

std::span<std::uint8_t> Mapping::bytes() const
{
    return m_bytes;
}

} // namespace tallyfold::files
