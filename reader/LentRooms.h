#pragma once

#include "files/Mapping.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <sys/types.h>
#include <vector>

namespace tallyfold::reader {

/// The memory that the program lends for pictures. It lends the same few rooms most of the time, and bringing
/// one into this process takes as long as half of copying a picture: so they stay here.
class LentRooms {
public:
    /// The first `size` bytes of the room that is the open file `descriptor`, which may be closed then; empty
    /// when it has fewer. They stay until other rooms are asked for.
    [[nodiscard]] std::span<std::uint8_t> bytesOf(int descriptor, std::size_t size);

private:
    struct Room {
        // Which file it is: none other can have this number as long as it is mapped here.
        dev_t device;
        ino_t number;
        files::Mapping memory;
    };
    void makeSpaceFor(std::size_t size);

    std::vector<Room> m_rooms; // The one that was mapped first in front.
};

} // namespace tallyfold::reader
