#include "reader/PictureRoom.h"

#include <optional>
#include <sys/stat.h>
#include <utility>

namespace tallyfold::reader {

bool PictureRoom::take(int descriptor, std::size_t size)
{
    struct stat status {};
    // What is mapped beyond the end of its file cannot be written to.
    if (::fstat(descriptor, &status) != 0 || status.st_size < 0 ||
        static_cast<std::size_t>(status.st_size) < size) {
        return false;
    }
    const bool isSame = m_device == status.st_dev && m_number == status.st_ino;
    if (isSame && m_pixels.size() >= size) {
        return true;
    }
    m_pixels = pdf::Pixels();
    // Shared memory: a file size limit of nothing does not let it be written to as a file.
    std::optional<pdf::Pixels> pixels = pdf::Pixels::sharedWith(descriptor, size);
    if (!pixels) {
        return false;
    }
    m_pixels = std::move(*pixels);
    m_device = status.st_dev;
    m_number = status.st_ino;
    return true;
}

std::span<std::uint8_t> PictureRoom::bytes()
{
    return m_pixels.bytes();
}

} // namespace tallyfold::reader
