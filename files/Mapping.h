#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tallyfold::files {

/// Mapped memory, anonymous or of a file, unmapped by the destructor. Reading beyond the end of a file that
/// has become shorter ends the process (SIGBUS).
class Mapping {
public:
    ~Mapping();
    Mapping(Mapping &&other) noexcept;
    Mapping &operator=(Mapping &&other) noexcept;
    Mapping(const Mapping &) = delete;
    Mapping &operator=(const Mapping &) = delete;

    /// `size` zero bytes; nothing for a size of 0 and when there is no memory.
    [[nodiscard]] static std::optional<Mapping> ofMemory(std::size_t size);

    /// The first `size` bytes of the open file `descriptor`, which may be closed then; nothing when it has
    /// fewer.
    [[nodiscard]] static std::optional<Mapping> sharedWith(int descriptor, std::size_t size);

    /// The bytes, of the size asked for.
    [[nodiscard]] std::span<std::uint8_t> bytes() const;

private:
    explicit Mapping(std::span<std::uint8_t> bytes);
    [[nodiscard]] static std::optional<Mapping> mapped(std::size_t size, int flags, int descriptor);

    std::span<std::uint8_t> m_bytes;
};

} // namespace tallyfold::files
