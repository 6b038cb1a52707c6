#pragma once

#include <cstdint>
#include <span>

namespace tallyfold::files {

/// Where the bytes of a file under construction go, front to back.
class ByteSink {
public:
    virtual ~ByteSink() = default;

    /// Takes all of `bytes`; false when that failed, after which the sink takes nothing more.
    [[nodiscard]] virtual bool write(std::span<const char> bytes) = 0;

    /// Takes bytes of the open file `descriptor`, from `offset` on and at most `length`, as far as they get
    /// here without passing through this process; their count. What is left is for `write`: 0 is no failure.
    [[nodiscard]] virtual std::uint64_t copyFrom(int /*descriptor*/, std::int64_t /*offset*/,
                                                 std::uint64_t /*length*/)
    {
        return 0;
    }

    /// Hands on what is still held back; false when that, or anything before, failed.
    [[nodiscard]] virtual bool finish() = 0;
};

} // namespace tallyfold::files
