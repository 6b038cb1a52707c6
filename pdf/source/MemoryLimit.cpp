#include "pdf/source/MemoryLimit.h"

#include "files/UnderSanitizer.h"
#include "files/Usage.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <limits>
#include <new>

namespace tallyfold::pdf {

namespace {

/// The sanitizers keep books on every byte, and freed ones for a while.
constexpr std::int64_t bytesForEach = isUnderSanitizer ? 3 : 1;

/// So much is given between two looks at what the process has: looking at every allocation would be slow.
constexpr std::int64_t unseen = 16 * 1024 * 1024;

/// What a thread may take.
struct Share {
    int limits = 0;                                                   ///< That live.
    std::int64_t unlooked = std::numeric_limits<std::int64_t>::max(); ///< Bytes until the next look.
    std::int64_t atFirst =
        -1; ///< What the process had at the first look; -1 before it. Most files need none.
    bool wasRefused = false;
};

thread_local Share share;

/// Looks at what the process has; whether it may have `size` bytes more.
bool mayTake(std::int64_t size) noexcept
{
    if (share.limits == 0) {
        share.unlooked = std::numeric_limits<std::int64_t>::max();
        return true;
    }
    share.unlooked = unseen;
    const std::int64_t now = files::memoryOfProcess();
    if (share.atFirst < 0) {
        share.atFirst = now;
    }
    constexpr auto most = static_cast<std::int64_t>(MemoryLimit::most) * bytesForEach;
    // What cleans up after a refusal is not refused: it frees soon, and may not fail.
    return size < most - (now - share.atFirst) || std::uncaught_exceptions() > 0;
}

/// The same as `taken`, when it is time for a look or the system has no more.
[[gnu::cold, gnu::noinline]] void *takenAfterLook(std::size_t size) noexcept
{
    constexpr auto largest = static_cast<std::size_t>(std::numeric_limits<std::int64_t>::max());
    const auto wanted = static_cast<std::int64_t>(size < largest ? size : largest);
    if (share.unlooked >= 0) { // Else it is counted already.
        share.unlooked -= wanted;
    }
    void *const memory = share.unlooked < 0 && !mayTake(wanted) ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        share.wasRefused = true;
    }
    return memory;
}

/// `size` bytes, or null where the limit or the system has no more. A run allocates half a million times for
/// every hundred pages: what nearly all of these need is a subtraction.
inline void *taken(std::size_t size) noexcept
{
    if (size <= static_cast<std::size_t>(unseen)) {
        share.unlooked -= static_cast<std::int64_t>(size);
        if (share.unlooked >= 0) [[likely]] {
            if (void *const memory = std::malloc(size); memory != nullptr) [[likely]] {
                return memory;
            }
        }
    }
    return takenAfterLook(size);
}

void giveBack(void *memory) noexcept
{
    std::free(memory); // NOLINT(cppcoreguidelines-owning-memory): this is what owners call in the end.
}

} // namespace

MemoryLimit::MemoryLimit() noexcept
{
    if (share.limits++ == 0) {
        share = {1, unseen, -1, false};
    }
}

MemoryLimit::~MemoryLimit()
{
    --share.limits;
}

bool MemoryLimit::wasReached() noexcept
{
    return share.limits > 0 && share.wasRefused;
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

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return tallyfold::pdf::taken(size);
}

void *operator new[](std::size_t size, const std::nothrow_t &) noexcept
{
    return tallyfold::pdf::taken(size);
}

void operator delete(void *memory, const std::nothrow_t &) noexcept
{
    tallyfold::pdf::giveBack(memory);
}

void operator delete[](void *memory, const std::nothrow_t &) noexcept
{
    tallyfold::pdf::giveBack(memory);
}
