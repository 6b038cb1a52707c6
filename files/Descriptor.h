#pragma once

#include <filesystem>

namespace tallyfold::files {

/// An open file, pipe or socket, which is closed at the end.
class Descriptor {
public:
    /// None.
    Descriptor() = default;
    /// What the system calls `number`; none when that is negative, as the system says of what it cannot open.
    explicit Descriptor(int number);
    ~Descriptor();
    Descriptor(Descriptor &&other) noexcept;
    Descriptor &operator=(Descriptor &&other) noexcept;
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    /// The file at `path`, to be read; none when it cannot be opened. Does not wait, whatever it is: a named
    /// pipe may be called "x.pdf".
    [[nodiscard]] static Descriptor ofFile(const std::filesystem::path &path);

    [[nodiscard]] bool isOpen() const;
    /// What the system calls it; -1 for none.
    [[nodiscard]] int number() const;

private:
    int m_number = -1;
};

} // namespace tallyfold::files
