#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tallyfold::pdf {

/// The bytes of a picture: whole pages of memory, which are not copied to bring them from one process to
/// another.
class Pixels {
public:
    /// No bytes.
    Pixels() = default;
    ~Pixels();
    Pixels(Pixels &&other) noexcept;
    Pixels &operator=(Pixels &&other) noexcept;
    Pixels(const Pixels &) = delete;
    Pixels &operator=(const Pixels &) = delete;

    /// So many bytes that are 0; nothing when there is no memory for them, or none are asked for.
    [[nodiscard]] static std::optional<Pixels> ofSize(std::size_t size);

    /// The first bytes of the open file `descriptor`, which may be closed then; nothing when it has not so
    /// many. Who shortens the file later ends whoever looks at them.
    [[nodiscard]] static std::optional<Pixels> sharedWith(int descriptor, std::size_t size);

    [[nodiscard]] std::span<std::uint8_t> bytes();
    [[nodiscard]] const std::uint8_t *data() const;
    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] const std::uint8_t &operator[](std::size_t index) const;
    [[nodiscard]] const std::uint8_t *begin() const;
    [[nodiscard]] const std::uint8_t *end() const;
    bool operator==(const Pixels &other) const;

private:
    [[nodiscard]] static std::optional<Pixels> mapped(std::size_t size, int flags, int descriptor);

    std::span<std::uint8_t> m_bytes;
};

} // namespace tallyfold::pdf
