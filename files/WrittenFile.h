#pragma once

#include "files/FileCalls.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tallyfold::files {

/// A file that was just written, opened again to verify it.
class WrittenFile {
public:
    /// The file `name` in the open folder `folder`, to which `size` bytes were written; null when it cannot
    /// be opened. `calls` must outlive it.
    [[nodiscard]] static std::unique_ptr<WrittenFile> open(int folder, const std::string &name,
                                                           std::uint64_t size, FileCalls &calls);

    ~WrittenFile();
    WrittenFile(const WrittenFile &) = delete;
    WrittenFile &operator=(const WrittenFile &) = delete;

    /// Count of the bytes that were written to it.
    [[nodiscard]] std::uint64_t size() const;

    /// Reads `bytes.size()` bytes at `offset`; false when the file is shorter or cannot be read.
    [[nodiscard]] bool read(std::uint64_t offset, std::span<char> bytes) const;

    /// Reads the last `count` bytes of the file, or all of a shorter one, into `bytes`. False as well when
    /// the file is longer than it should be.
    [[nodiscard]] bool readEnd(std::uint64_t count, std::string &bytes) const;

private:
    WrittenFile(int descriptor, std::uint64_t size, FileCalls &calls);
    [[nodiscard]] std::size_t readUpTo(std::uint64_t offset, std::span<char> bytes) const;

    int m_descriptor;
    std::uint64_t m_size;
    FileCalls &m_calls;
};

} // namespace tallyfold::files
