#pragma once

#include "files/Descriptor.h"
#include "files/Mapping.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace tallyfold::pdf {

/// Shared memory that another process draws a picture into. It is sealed, so neither process can change its
/// size; its content may change at any time.
class SharedPixelBuffer {
public:
    /// A buffer of `size` bytes; null for a size of 0, for one that no picture has, and when there is no
    /// memory.
    [[nodiscard]] static std::unique_ptr<SharedPixelBuffer> ofSize(std::size_t size);

    /// The memory as an open file, which the other process maps.
    [[nodiscard]] int descriptor() const;
    /// The memory in this process, at least as large as asked for.
    [[nodiscard]] std::span<std::uint8_t> bytes() const;

private:
    SharedPixelBuffer(files::Descriptor file, files::Mapping memory);

    files::Descriptor m_file;
    files::Mapping m_memory;
};

/// The buffers for the pictures of one process. Allocating memory and mapping it into both processes takes as
/// long as copying a picture twice, so buffers that come back are lent again.
class SharedPixelBufferPool {
public:
    SharedPixelBufferPool();

    /// A buffer of at least `size` bytes and of any content, which comes back when its last owner releases
    /// it; null as `SharedPixelBuffer::ofSize`.
    [[nodiscard]] std::shared_ptr<SharedPixelBuffer> lend(std::size_t size);

    /// Forgets all buffers, those that are lent included: none of them is lent again.
    void clear();

private:
    class FreeList;
    std::shared_ptr<FreeList> m_free;
};

} // namespace tallyfold::pdf
