#pragma once

#include "files/ByteSink.h"
#include "files/FileCalls.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

namespace tallyfold::files {

/// Writes to an open file through a buffer. The first failure is kept, and every later call fails.
class FileSink final : public ByteSink {
public:
    /// Creates the file at `path` and gives a sink into it; the umask applies. Null, with the reason in
    /// `error`, when that fails or the name exists, a dangling link included.
    [[nodiscard]] static std::unique_ptr<FileSink> create(const std::filesystem::path &path,
                                                          std::error_code &error);

    /// The same for the file `name` in the open folder `folder`.
    [[nodiscard]] static std::unique_ptr<FileSink> create(int folder, const std::filesystem::path &name,
                                                          FileCalls &calls, std::error_code &error);

    /// Takes over `descriptor`, which is open for writing. `calls` must outlive the sink.
    explicit FileSink(int descriptor, FileCalls &calls = FileCalls::system());
    /// Closes the file if it is still open and discards the buffer.
    ~FileSink() override;
    FileSink(const FileSink &) = delete;
    FileSink &operator=(const FileSink &) = delete;

    [[nodiscard]] bool write(std::span<const char> bytes) override;
    /// After the first failure always 0: not every file system supports it.
    [[nodiscard]] std::uint64_t copyFrom(int descriptor, std::int64_t offset, std::uint64_t length) override;
    [[nodiscard]] bool finish() override;

    /// Finishes, syncs the file to the disk and closes it. False when any of that, or any write before it,
    /// failed; the content of the file is unreliable then, even if a later sync succeeds (a failed one
    /// leaves its pages marked clean). Network file systems report a full disk only here. Called once.
    [[nodiscard]] bool flushToDisk();

    /// Count of the bytes written.
    [[nodiscard]] std::uint64_t size() const;

    /// The first failure; no error before it.
    [[nodiscard]] std::error_code failure() const override;

private:
    bool fail();
    bool writeThrough(std::span<const char> bytes);
    bool flush();

    FileCalls &m_calls;
    int m_descriptor;
    std::vector<char> m_buffer;
    std::uint64_t m_size = 0;
    std::error_code m_failure;
    bool m_canCopy = true;
};

} // namespace tallyfold::files
