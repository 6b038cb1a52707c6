#pragma once

#include "files/Mapping.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <sys/types.h>
#include <vector>

namespace tallyfold::reader {

/// The shared buffers for pictures that are mapped into this process. The program lends the same few again
/// and again, and mapping one takes half as long as copying a picture, so they stay mapped.
class MappedBufferCache {
public:
    /// The first `size` bytes of the buffer that is the open file `descriptor`, which may be closed then;
    /// empty when it has fewer. They stay mapped until other buffers are asked for.
    [[nodiscard]] std::span<std::uint8_t> bytesOf(int descriptor, std::size_t size);

private:
    struct Buffer {
        // Identify the file: no other file has this number as long as it is mapped.
        dev_t device;
        ino_t number;
        files::Mapping memory;
    };
    void unmapFor(std::size_t size);

    std::vector<Buffer> m_buffers; ///< In the order in which they were mapped.
};

} // namespace tallyfold::reader
