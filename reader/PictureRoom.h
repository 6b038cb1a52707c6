#pragma once

#include "pdf/Pixels.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <sys/types.h>

namespace tallyfold::reader {

/// The memory that the program hands over for a picture. It hands over the same one most of the time, and
/// bringing it into this process takes as long as half of copying the picture: so it stays here.
class PictureRoom {
public:
    /// Makes this the room in the open file `descriptor`, which may be closed then; false when that has fewer
    /// bytes than `size`.
    [[nodiscard]] bool take(int descriptor, std::size_t size);

    /// The bytes of the room that was taken last, at least as many as were asked for.
    [[nodiscard]] std::span<std::uint8_t> bytes();

private:
    pdf::Pixels m_pixels;
    // Which file it is: none other can have this number as long as it is mapped here.
    dev_t m_device = 0;
    ino_t m_number = 0;
};

} // namespace tallyfold::reader
