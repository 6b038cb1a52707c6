#include "pdf/viewing/PictureRooms.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <iterator>
#include <mutex>
#include <optional>
#include <sys/mman.h>
#include <utility>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// Bytes of a hundred million pixels, more than any preview has. The system does not refuse more: it ends
/// programs to get it.
constexpr std::size_t mostBytes = 400'000'000;

/// Bytes of rooms that wait to be lent: more than the pages of a preview take.
constexpr std::size_t mostWaiting = std::size_t{32} << 20U;

} // namespace

std::unique_ptr<PictureRoom> PictureRoom::ofSize(std::size_t size)
{
    if (size == 0 || size > mostBytes) {
        return nullptr;
    }
    files::Descriptor file(::memfd_create("picture", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    // All of it now: memory that turns out to be missing when it is touched ends the program.
    int error = 0;
    do {
        error = ::fallocate(file.number(), 0, 0, static_cast<off_t>(size));
    } while (error != 0 && errno == EINTR);
    if (error != 0 || ::fcntl(file.number(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0) {
        return nullptr;
    }
    std::optional<files::Mapping> memory = files::Mapping::sharedWith(file.number(), size);
    return memory ? std::unique_ptr<PictureRoom>(new PictureRoom(std::move(file), std::move(*memory)))
                  : nullptr;
}

PictureRoom::PictureRoom(files::Descriptor file, files::Mapping memory)
    : m_file(std::move(file)), m_memory(std::move(memory))
{
}

int PictureRoom::descriptor() const
{
    return m_file.number();
}

std::span<std::uint8_t> PictureRoom::bytes() const
{
    return m_memory.bytes();
}

/// The rooms that nobody has, those that came back last at the end.
class PictureRooms::Shelf {
public:
    /// Takes one of at least so many bytes; null when there is none.
    [[nodiscard]] std::unique_ptr<PictureRoom> take(std::size_t size)
    {
        const std::scoped_lock lock(m_mutex);
        const auto found = std::find_if(m_rooms.rbegin(), m_rooms.rend(),
                                        [size](const auto &room) { return room->bytes().size() >= size; });
        if (found == m_rooms.rend()) {
            return nullptr;
        }
        std::unique_ptr<PictureRoom> room = std::move(*found);
        m_rooms.erase(std::next(found).base());
        m_bytes -= room->bytes().size();
        return room;
    }

    /// Puts one back, and lets go of those that have waited longest when there are more than should wait.
    void put(std::unique_ptr<PictureRoom> room)
    {
        const std::scoped_lock lock(m_mutex);
        m_bytes += room->bytes().size();
        m_rooms.push_back(std::move(room));
        while (m_bytes > mostWaiting) {
            m_bytes -= m_rooms.front()->bytes().size();
            m_rooms.erase(m_rooms.begin());
        }
    }

private:
    std::mutex m_mutex;
    std::vector<std::unique_ptr<PictureRoom>> m_rooms;
    std::size_t m_bytes = 0;
};

PictureRooms::PictureRooms() : m_shelf(std::make_shared<Shelf>()) {}

std::shared_ptr<PictureRoom> PictureRooms::lend(std::size_t size)
{
    std::unique_ptr<PictureRoom> room = m_shelf->take(size);
    if (!room) {
        room = PictureRoom::ofSize(size);
    }
    const auto putBack = [shelf = std::weak_ptr<Shelf>(m_shelf)](PictureRoom *lent) {
        std::unique_ptr<PictureRoom> back(lent);
        if (const std::shared_ptr<Shelf> there = shelf.lock()) {
            there->put(std::move(back));
        }
    };
    return room ? std::shared_ptr<PictureRoom>(room.release(), putBack) : nullptr;
}

void PictureRooms::startAnew()
{
    m_shelf = std::make_shared<Shelf>();
}

} // namespace tallyfold::pdf
