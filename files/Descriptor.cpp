#include "files/Descriptor.h"

#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace tallyfold::files {

Descriptor::Descriptor(int number) : m_number(number) {}

Descriptor::~Descriptor()
{
    if (m_number >= 0) {
        ::close(m_number);
    }
}

Descriptor::Descriptor(Descriptor &&other) noexcept : m_number(std::exchange(other.m_number, -1)) {}

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

Descriptor Descriptor::ofFile(const std::filesystem::path &path)
{
    return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

bool Descriptor::isOpen() const
{
    return m_number >= 0;
}

int Descriptor::number() const
{
    return m_number;
}

} // namespace tallyfold::files
