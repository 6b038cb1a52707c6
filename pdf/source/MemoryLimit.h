#pragma once

#include <cstddef>

namespace tallyfold::pdf {

/// Bounds the memory that is taken for one file. The parser unpacks object streams and cross-references as
/// far as a file wants it, and a few hundred kilobytes can want any amount: nothing but the allocator can say
/// no.
///
/// While one of these lives, `operator new` on the thread that made it throws `std::bad_alloc` once the
/// process has about `most` bytes more than before. The parser swallows that here and there and goes on with
/// an object less, hence `wasReached`.
class MemoryLimit {
public:
    /// Ordinary files need a tenth of it; a page with 100,000 annotations needs most of it.
    static constexpr std::size_t most = 512 * 1024 * 1024;

    MemoryLimit() noexcept;
    ~MemoryLimit();
    MemoryLimit(const MemoryLimit &) = delete;
    MemoryLimit &operator=(const MemoryLimit &) = delete;

    /// Whether memory was refused to this thread, by this limit or by the system, since the first of the
    /// limits that live on it was made.
    [[nodiscard]] static bool wasReached() noexcept;
};

} // namespace tallyfold::pdf
