#include "pdf/Pixels.h"

#include <algorithm>
#include <sys/mman.h>
#include <sys/stat.h>
#include <utility>

namespace tallyfold::pdf {

Pixels::~Pixels()
{
    if (!m_bytes.empty()) {
        ::munmap(m_bytes.data(), m_bytes.size());
    }
}

Pixels::Pixels(Pixels &&other) noexcept : m_bytes(std::exchange(other.m_bytes, {})) {}

Pixels &Pixels::operator=(Pixels &&other) noexcept
{
    std::swap(m_bytes, other.m_bytes);
    return *this;
}

std::optional<Pixels> Pixels::mapped(std::size_t size, int flags, int descriptor)
{
    void *memory =
        size == 0 ? MAP_FAILED : ::mmap(nullptr, size, PROT_READ | PROT_WRITE, flags, descriptor, 0);
    if (memory == MAP_FAILED) {
        return std::nullopt;
    }
    Pixels pixels;
    pixels.m_bytes = {static_cast<std::uint8_t *>(memory), size};
    return pixels;
}

std::optional<Pixels> Pixels::ofSize(std::size_t size)
{
    std::optional<Pixels> pixels = mapped(size, MAP_PRIVATE | MAP_ANONYMOUS, -1);
    if (pixels) {
        // In few large pages where there are any: getting thousands of small ones takes as long as copying
        // the picture. Advice that is not taken costs time, nothing else.
        ::madvise(pixels->m_bytes.data(), size, MADV_HUGEPAGE);
    }
    return pixels;
}

std::optional<Pixels> Pixels::sharedWith(int descriptor, std::size_t size)
{
    struct stat status {};
    const bool hasAll = ::fstat(descriptor, &status) == 0 && status.st_size >= 0 &&
                        static_cast<std::size_t>(status.st_size) >= size;
    return hasAll ? mapped(size, MAP_SHARED | MAP_POPULATE, descriptor) : std::nullopt;
}

std::span<std::uint8_t> Pixels::bytes()
{
    return m_bytes;
}

const std::uint8_t *Pixels::data() const
{
    return m_bytes.data();
}

std::size_t Pixels::size() const
{
    return m_bytes.size();
}

const std::uint8_t &Pixels::operator[](std::size_t index) const
{
    return m_bytes[index];
}

const std::uint8_t *Pixels::begin() const
{
    return m_bytes.data();
}

const std::uint8_t *Pixels::end() const
{
    return m_bytes.data() + m_bytes.size();
}

bool Pixels::operator==(const Pixels &other) const
{
    return std::equal(begin(), end(), other.begin(), other.end());
}

} // namespace tallyfold::pdf
