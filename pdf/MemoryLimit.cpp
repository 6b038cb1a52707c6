#include "pdf/MemoryLimit.h"

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <malloc.h>
#include <new>

namespace tallyfold::pdf {

namespace {

/// What a thread may take.
struct Share {
    int limits = 0;        ///< That live.
    std::int64_t left = 0; ///< Bytes.
    bool wasRefused = false;
};

thread_local Share share;

/// `size` bytes, or null where the limit or the system has no more.
void *taken(std::size_t size) noexcept
{
    // What cleans up after a refusal is not refused: it frees soon, and may not fail.
    const bool isRefused =
        share.limits > 0 && static_cast<std::int64_t>(size) > share.left && std::uncaught_exceptions() == 0;
    void *const memory = isRefused ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (share.limits > 0) {
        if (memory != nullptr) {
            share.left -= static_cast<std::int64_t>(malloc_usable_size(memory));
        } else {
            share.wasRefused = true;
        }
    }
    return memory;
}

void giveBack(void *memory) noexcept
{
    if (share.limits > 0 && memory != nullptr) {
        share.left += static_cast<std::int64_t>(malloc_usable_size(memory));
    }
    std::free(memory);
}

} // namespace

MemoryLimit::MemoryLimit() noexcept
{
    if (share.limits++ == 0) {
        share.left = most;
        share.wasRefused = false;
    }
}

MemoryLimit::~MemoryLimit()
{
    --share.limits;
}

bool MemoryLimit::wasReached() noexcept
{
    return share.wasRefused;
}

} // namespace tallyfold::pdf

// These take the place of the library's in every program that opens documents, and in the libraries it uses.

void *operator new(std::size_t size)
{
    void *const memory = tallyfold::pdf::taken(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void *operator new[](std::size_t size)
{
    return operator new(size);
}

void operator delete(void *memory) noexcept
{
    tallyfold::pdf::giveBack(memory);
}

void operator delete[](void *memory) noexcept
{
    tallyfold::pdf::giveBack(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    tallyfold::pdf::giveBack(memory);
}

void operator delete[](void *memory, std::size_t) noexcept
{
    tallyfold::pdf::giveBack(memory);
}
