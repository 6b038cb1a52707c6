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

/// Sanitizers add memory to every allocation and keep freed ones for a while.
constexpr std::int64_t bytesForEach = isUnderSanitizer ? 3 : 1;

/// Bytes allocated between two checks of what the process has: checking every allocation would be slow.
constexpr std::int64_t unseen = 16 * 1024 * 1024;

/// The memory limit of a thread.
struct Share {
    int limits = 0;                                                   ///< The limits that live on it.
    std::int64_t unlooked = std::numeric_limits<std::int64_t>::max(); ///< Bytes until the next check.
    std::int64_t atFirst = -1; ///< Memory at the first check; -1 before it. Most files need none.
    bool wasRefused = false;
};

thread_local Share share;

/// Checks the memory of the process; whether it may have `size` bytes more.
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
    constexpr auto limit = static_cast<std::int64_t>(MemoryLimit::maxBytes) * bytesForEach;
    // Cleanup after a failure is not refused: it frees memory soon and may not fail.
    return size < limit - (now - share.atFirst) || std::uncaught_exceptions() > 0;
}

/// As `taken`, when a check is due or the system has no more memory.
[[gnu::cold, gnu::noinline]] void *takenAfterLook(std::size_t size) noexcept
{
    constexpr auto largest = static_cast<std::size_t>(std::numeric_limits<std::int64_t>::max());
    const auto wanted = static_cast<std::int64_t>(size < largest ? size : largest);
    if (share.unlooked >= 0) { // Otherwise it is counted already.
        share.unlooked -= wanted;
    }
    void *const memory = share.unlooked < 0 && !mayTake(wanted) ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        share.wasRefused = true;
    }
    return memory;
}

/// `size` bytes, or null beyond the limit and when the system has no more. Stamping a hundred pages
/// allocates half a million times: nearly always this is one subtraction.
inline void *taken(std::size_t size) noexcept
{
    if (size <= static_cast<std::size_t>(unseen)) {
        share.unlooked -= static_cast<std::int64_t>(size);
        if (share.unlooked >= 0) [[likely]] {
            // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): this is where owners get theirs from.
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

// These replace the library's operators in every program that opens documents, and in the libraries it uses.

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
