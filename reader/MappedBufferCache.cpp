#include "reader/MappedBufferCache.h"

#include <algorithm>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace tallyfold::reader {

namespace {

/// Bytes that stay mapped: more than the pages of a preview take.
constexpr std::size_t maxBytes = std::size_t{32} << 20U;

} // namespace

std::span<std::uint8_t> MappedBufferCache::bytesOf(int descriptor, std::size_t size)
{
    struct stat status {};
    // A page beyond the end of its file cannot be written (SIGBUS).
    if (::fstat(descriptor, &status) != 0 || status.st_size < 0 ||
        static_cast<std::size_t>(status.st_size) < size) {
        return {};
    }
    const auto isIt = [&status](const Buffer &buffer) {
        return buffer.device == status.st_dev && buffer.number == status.st_ino;
    };
    const auto known = std::find_if(m_buffers.begin(), m_buffers.end(), isIt);
    if (known != m_buffers.end() && known->memory.bytes().size() >= size) {
        return known->memory.bytes().first(size);
    }
    if (known != m_buffers.end()) {
        m_buffers.erase(known);
    }
    unmapFor(size);
    // Mapped, because the file size limit of 0 forbids writing to it as a file.
    std::optional<files::Mapping> memory = files::Mapping::sharedWith(descriptor, size);
    if (!memory) {
        return {};
    }
    m_buffers.push_back({status.st_dev, status.st_ino, std::move(*memory)});
    return m_buffers.back().memory.bytes();
}

void MappedBufferCache::unmapFor(std::size_t size)
{
    std::size_t sum = size;
    for (const Buffer &buffer : m_buffers) {
        sum += buffer.memory.bytes().size();
    }
    while (sum > maxBytes && !m_buffers.empty()) {
        sum -= m_buffers.front().memory.bytes().size();
        m_buffers.erase(m_buffers.begin());
    }
}

} // namespace tallyfold::reader
