#include "pdf/viewing/Pixels.h"

#include "files/Mapping.h"

#include <algorithm>
#include <utility>

namespace tallyfold::pdf {

Pixels::Pixels(std::span<std::uint8_t> bytes, std::shared_ptr<const void> owner)
    : m_bytes(bytes), m_owner(std::move(owner))
{
}

Pixels::Pixels(Pixels &&other) noexcept
    : m_bytes(std::exchange(other.m_bytes, {})), m_owner(std::move(other.m_owner))
{
}

Pixels &Pixels::operator=(Pixels &&other) noexcept
{
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_owner, other.m_owner);
    return *this;
}

std::optional<Pixels> Pixels::ofSize(std::size_t size)
{
    std::optional<files::Mapping> memory = files::Mapping::ofMemory(size);
    if (!memory) {
        return std::nullopt;
    }
    const std::span<std::uint8_t> bytes = memory->bytes();
    return Pixels(bytes, std::make_shared<const files::Mapping>(std::move(*memory)));
}

std::span<std::uint8_t> Pixels::bytes()
{
    return m_bytes;
}

const std::uint8_t *Pixels::data() const
{
    return m_bytes.data();
}

std::size_t Pixels::size() const
{
    return m_bytes.size();
}

const std::uint8_t &Pixels::operator[](std::size_t index) const
{
    return m_bytes[index];
}

const std::uint8_t *Pixels::begin() const
{
    return m_bytes.data();
}

const std::uint8_t *Pixels::end() const
{
    return m_bytes.data() + m_bytes.size();
}

bool Pixels::operator==(const Pixels &other) const
{
    return std::equal(begin(), end(), other.begin(), other.end());
}

} // namespace tallyfold::pdf
