#pragma once

#include "pdf/ByteSink.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace tallyfold::pdf {

/// A new file, written through a buffer. Nothing that exists is ever written to.
class FileSink final : public ByteSink {
public:
    /// Creates the file at `path`; null when it cannot be created, be it because something is there.
    [[nodiscard]] static std::unique_ptr<FileSink> create(const std::filesystem::path &path);
    /// Writes to the open `descriptor`, which is closed with this.
    explicit FileSink(int descriptor);

    ~FileSink() override;
    FileSink(const FileSink &) = delete;
    FileSink &operator=(const FileSink &) = delete;

    [[nodiscard]] bool write(std::span<const char> bytes) override;
    /// Writes out the buffer. The bytes may still be in the system's cache: see `flushToDisk`.
    [[nodiscard]] bool finish() override;

    /// Waits until the file is on the disk, and closes it; false when anything about it failed. Called once,
    /// after `finish`: what a failed flush left behind cannot be flushed again.
    [[nodiscard]] bool flushToDisk();

private:
    [[nodiscard]] bool writeOut(std::span<const char> bytes);
    [[nodiscard]] bool close();

    int m_descriptor;
    std::vector<char> m_buffer;
    bool m_hasFailed = false;
};

} // namespace tallyfold::pdf
