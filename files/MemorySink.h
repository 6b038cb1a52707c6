#pragma once

#include "files/ByteSink.h"

#include <utility>
#include <vector>

namespace tallyfold::files {

/// A sink into memory.
class MemorySink final : public ByteSink {
public:
    [[nodiscard]] bool write(std::span<const char> bytes) override
    {
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
        return true;
    }

    [[nodiscard]] bool finish() override
    {
        return true;
    }

    /// Everything written so far.
    [[nodiscard]] std::vector<char> bytes() &&
    {
        return std::move(m_bytes);
    }

private:
    std::vector<char> m_bytes;
};

} // namespace tallyfold::files
