#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace tallyfold::pdf {

/// The bytes of a picture, in memory of any owner: none are copied between the processes.
class Pixels {
public:
    /// No bytes.
    Pixels() = default;
    /// Bytes that are valid as long as `owner` lives.
    Pixels(std::span<std::uint8_t> bytes, std::shared_ptr<const void> owner);
    ~Pixels() = default;
    Pixels(Pixels &&other) noexcept;
    Pixels &operator=(Pixels &&other) noexcept;
    Pixels(const Pixels &) = delete;
    Pixels &operator=(const Pixels &) = delete;

    /// `size` zero bytes; nothing for a size of 0 and when there is no memory.
    [[nodiscard]] static std::optional<Pixels> ofSize(std::size_t size);

    [[nodiscard]] std::span<std::uint8_t> bytes();
    [[nodiscard]] const std::uint8_t *data() const;
    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] const std::uint8_t &operator[](std::size_t index) const;
    [[nodiscard]] const std::uint8_t *begin() const;
    [[nodiscard]] const std::uint8_t *end() const;
    bool operator==(const Pixels &other) const;

private:
    std::span<std::uint8_t> m_bytes;
    std::shared_ptr<const void> m_owner;
};

} // namespace tallyfold::pdf
