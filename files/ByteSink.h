#pragma once

#include <cstdint>
#include <span>
#include <system_error>

namespace tallyfold::files {

/// Receives the bytes of a file under construction, front to back.
class ByteSink {
public:
    virtual ~ByteSink() = default;

    /// Writes all of `bytes`; false when that failed, after which every call fails.
    [[nodiscard]] virtual bool write(std::span<const char> bytes) = 0;

    /// Copies bytes of the open file `descriptor`, from `offset` on and at most `length`, without reading
    /// them into this process; gives their count. The caller writes the rest: 0 is no failure.
    [[nodiscard]] virtual std::uint64_t copyFrom(int /*descriptor*/, std::int64_t /*offset*/,
                                                 std::uint64_t /*length*/)
    {
        return 0;
    }

    /// Flushes what is buffered; false when that, or any call before, failed.
    [[nodiscard]] virtual bool finish() = 0;

    /// The system's reason why it failed; no error while it has not, and where the system had no part in it.
    [[nodiscard]] virtual std::error_code failure() const
    {
        return {};
    }
};

} // namespace tallyfold::files
