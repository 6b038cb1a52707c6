#pragma once

#include <cstdint>
#include <span>
#include <system_error>

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

    /// The system's reason why it failed; no error while it has not, and where the system had no part in it.
    [[nodiscard]] virtual std::error_code failure() const
    {
        return {};
    }
};

} // namespace tallyfold::files
