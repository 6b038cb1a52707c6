#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tallyfold::files {

/// Memory that comes from the system in whole pages, its own or that of a file, and goes back at the end.
/// Whoever makes such a file shorter ends the process that looks at what was cut off.
class Mapping {
public:
    ~Mapping();
    Mapping(Mapping &&other) noexcept;
    Mapping &operator=(Mapping &&other) noexcept;
    Mapping(const Mapping &) = delete;
    Mapping &operator=(const Mapping &) = delete;

    /// So many bytes that are 0; nothing when there is no memory for them, or none are asked for.
    [[nodiscard]] static std::optional<Mapping> ofMemory(std::size_t size);

    /// The first bytes of the open file `descriptor`, which may be closed then; nothing when it has not so
    /// many.
    [[nodiscard]] static std::optional<Mapping> sharedWith(int descriptor, std::size_t size);

    /// As many as were asked for.
    [[nodiscard]] std::span<std::uint8_t> bytes() const;

private:
    explicit Mapping(std::span<std::uint8_t> bytes);
    [[nodiscard]] static std::optional<Mapping> mapped(std::size_t size, int flags, int descriptor);

    std::span<std::uint8_t> m_bytes;
};

} // namespace tallyfold::files
