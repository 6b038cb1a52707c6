#pragma once

#include "files/FileCalls.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tallyfold::files {

/// A file that was written a moment ago, opened once more to read back what became of it.
class WrittenFile {
public:
    /// The file `name` in the open folder `folder`, into which `size` bytes went; null when it cannot be
    /// opened. `calls` must outlive it.
    [[nodiscard]] static std::unique_ptr<WrittenFile> open(int folder, const std::string &name,
                                                           std::uint64_t size, FileCalls &calls);

    ~WrittenFile();
    WrittenFile(const WrittenFile &) = delete;
    WrittenFile &operator=(const WrittenFile &) = delete;

    /// Count of the bytes that went into it.
    [[nodiscard]] std::uint64_t size() const;

    /// Fills `bytes` with what lies at `offset`; false when the file ends before that or cannot be read.
    [[nodiscard]] bool read(std::uint64_t offset, std::span<char> bytes) const;

    /// The last `count` bytes of the file, or all when there are fewer, in `bytes`; false as well when it is
    /// longer than it should be.
    [[nodiscard]] bool readEnd(std::uint64_t count, std::string &bytes) const;

private:
    WrittenFile(int descriptor, std::uint64_t size, FileCalls &calls);
    [[nodiscard]] std::size_t readUpTo(std::uint64_t offset, std::span<char> bytes) const;

    int m_descriptor;
    std::uint64_t m_size;
    FileCalls &m_calls;
};

} // namespace tallyfold::files
