#pragma once

#include <cstddef>

namespace tallyfold::pdf {

/// Limits the memory for one file. The parser expands object streams and cross-references without a bound,
/// and a few hundred kilobytes can expand to any size; only the allocator can refuse.
///
/// While an object of this class lives, `operator new` on the thread that made it throws `std::bad_alloc`
/// once the process has about `maxBytes` more than before. The parser sometimes catches that and goes on
/// without an object, hence `wasReached`.
class MemoryLimit {
public:
    /// Ordinary files need a tenth; a page with 100,000 annotations needs most of it.
    static constexpr std::size_t maxBytes = 512 * 1024 * 1024;

    MemoryLimit() noexcept;
    ~MemoryLimit();
    MemoryLimit(const MemoryLimit &) = delete;
    MemoryLimit &operator=(const MemoryLimit &) = delete;

    /// Whether an allocation of this thread failed, by this limit or by the system, since the first of its
    /// limits that live was made.
    [[nodiscard]] static bool wasReached() noexcept;
};

} // namespace tallyfold::pdf
