#include "pdf/viewing/SharedPixelBufferPool.h"

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

/// A hundred million pixels, more than any preview has. The system does not refuse more: it kills programs to
/// get it.
constexpr std::size_t maxBytes = 400'000'000;

/// Bytes of free buffers that are kept: more than the pages of a preview take.
constexpr std::size_t maxFreeBytes = std::size_t{32} << 20U;

} // namespace

std::unique_ptr<SharedPixelBuffer> SharedPixelBuffer::ofSize(std::size_t size)
{
    if (size == 0 || size > maxBytes) {
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
    return memory ? std::unique_ptr<SharedPixelBuffer>(
                        new SharedPixelBuffer(std::move(file), std::move(*memory)))
                  : nullptr;
}

SharedPixelBuffer::SharedPixelBuffer(files::Descriptor file, files::Mapping memory)
    : m_file(std::move(file)), m_memory(std::move(memory))
{
}

int SharedPixelBuffer::descriptor() const
{
    return m_file.number();
}

std::span<std::uint8_t> SharedPixelBuffer::bytes() const
{
    return m_memory.bytes();
}

/// The free buffers, in the order in which they came back.
class SharedPixelBufferPool::FreeList {
public:
    /// Takes one of at least `size` bytes; null when there is none.
    [[nodiscard]] std::unique_ptr<SharedPixelBuffer> take(std::size_t size)
    {
        const std::scoped_lock lock(m_mutex);
        const auto found = std::find_if(m_buffers.rbegin(), m_buffers.rend(), [size](const auto &buffer) {
            return buffer->bytes().size() >= size;
        });
        if (found == m_buffers.rend()) {
            return nullptr;
        }
        std::unique_ptr<SharedPixelBuffer> buffer = std::move(*found);
        m_buffers.erase(std::next(found).base());
        m_bytes -= buffer->bytes().size();
        return buffer;
    }

    /// Puts one back, and releases those that came back first beyond `maxFreeBytes`.
    void put(std::unique_ptr<SharedPixelBuffer> buffer)
    {
        const std::scoped_lock lock(m_mutex);
        m_bytes += buffer->bytes().size();
        m_buffers.push_back(std::move(buffer));
        while (m_bytes > maxFreeBytes) {
            m_bytes -= m_buffers.front()->bytes().size();
            m_buffers.erase(m_buffers.begin());
        }
    }

private:
    std::mutex m_mutex;
    std::vector<std::unique_ptr<SharedPixelBuffer>> m_buffers;
    std::size_t m_bytes = 0;
};

SharedPixelBufferPool::SharedPixelBufferPool() : m_free(std::make_shared<FreeList>()) {}

std::shared_ptr<SharedPixelBuffer> SharedPixelBufferPool::lend(std::size_t size)
{
    std::unique_ptr<SharedPixelBuffer> buffer = m_free->take(size);
    if (!buffer) {
        buffer = SharedPixelBuffer::ofSize(size);
    }
    const auto putBack = [list = std::weak_ptr<FreeList>(m_free)](SharedPixelBuffer *lent) {
        std::unique_ptr<SharedPixelBuffer> back(lent);
        if (const std::shared_ptr<FreeList> there = list.lock()) {
            there->put(std::move(back));
        }
    };
    return buffer ? std::shared_ptr<SharedPixelBuffer>(buffer.release(), putBack) : nullptr;
}

void SharedPixelBufferPool::clear()
{
    m_free = std::make_shared<FreeList>();
}

} // namespace tallyfold::pdf
