#pragma once

#include <filesystem>

namespace tallyfold::files {

/// A file descriptor: an open file, pipe or socket, closed by the destructor.
class Descriptor {
public:
    /// No file.
    Descriptor() = default;
    /// Owns the descriptor `number`; no file when that is negative, as failed system calls give it.
    explicit Descriptor(int number);
    ~Descriptor();
    Descriptor(Descriptor &&other) noexcept;
    Descriptor &operator=(Descriptor &&other) noexcept;
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    /// The file at `path`, open for reading; no file when it cannot be opened. Never blocks: "x.pdf" may be
    /// a named pipe.
    [[nodiscard]] static Descriptor ofFile(const std::filesystem::path &path);

    [[nodiscard]] bool isOpen() const;
    /// The number of the descriptor; -1 for no file.
    [[nodiscard]] int number() const;

private:
    int m_number = -1;
};

} // namespace tallyfold::files
