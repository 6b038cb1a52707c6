#pragma once

#include <span>

namespace tallyfold::pdf {

/// Where the bytes of a file under construction go, front to back.
class ByteSink {
public:
    virtual ~ByteSink() = default;

    /// Takes all of `bytes`; false when that failed, after which the sink takes nothing more.
    [[nodiscard]] virtual bool write(std::span<const char> bytes) = 0;

    /// Hands on what is still held back; false when that, or anything before, failed.
    [[nodiscard]] virtual bool finish() = 0;
};

} // namespace tallyfold::pdf
