#include "reader/LentRooms.h"

#include <algorithm>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace tallyfold::reader {

namespace {

/// Bytes of rooms that stay: more than the pages of a preview take.
constexpr std::size_t mostBytes = std::size_t{32} << 20U;

} // namespace

std::span<std::uint8_t> LentRooms::bytesOf(int descriptor, std::size_t size)
{
    struct stat status {};
    // What is mapped beyond the end of its file cannot be written to.
    if (::fstat(descriptor, &status) != 0 || status.st_size < 0 ||
        static_cast<std::size_t>(status.st_size) < size) {
        return {};
    }
    const auto isIt = [&status](const Room &room) {
        return room.device == status.st_dev && room.number == status.st_ino;
    };
    const auto known = std::find_if(m_rooms.begin(), m_rooms.end(), isIt);
    if (known != m_rooms.end() && known->memory.bytes().size() >= size) {
        return known->memory.bytes().first(size);
    }
    if (known != m_rooms.end()) {
        m_rooms.erase(known);
    }
    makeSpaceFor(size);
    // Shared memory: a file size limit of nothing does not let it be written to as a file.
    std::optional<files::Mapping> memory = files::Mapping::sharedWith(descriptor, size);
    if (!memory) {
        return {};
    }
    m_rooms.push_back({status.st_dev, status.st_ino, std::move(*memory)});
    return m_rooms.back().memory.bytes();
}

void LentRooms::makeSpaceFor(std::size_t size)
{
    std::size_t sum = size;
    for (const Room &room : m_rooms) {
        sum += room.memory.bytes().size();
    }
    while (sum > mostBytes && !m_rooms.empty()) {
        sum -= m_rooms.front().memory.bytes().size();
        m_rooms.erase(m_rooms.begin());
    }
}

} // namespace tallyfold::reader
