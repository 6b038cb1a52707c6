#pragma once

#include "files/ByteSink.h"
#include "files/FileCalls.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

namespace tallyfold::files {

/// A sink into an open file, buffered. The first failure is kept and everything after it refused,
/// so that the order of failing is the order of writing.
class FileSink final : public ByteSink {
public:
    /// Creates the file at `path`, readable and writable for whom the umask lets, and gives a sink into it;
    /// null, with the reason in `error`, when that fails or when anything, a dangling link included, has that
    /// name already.
    [[nodiscard]] static std::unique_ptr<FileSink> create(const std::filesystem::path &path,
                                                          std::error_code &error);

    /// The same for the file `name` in the open folder `folder`.
    [[nodiscard]] static std::unique_ptr<FileSink> create(int folder, const std::filesystem::path &name,
                                                          FileCalls &calls, std::error_code &error);

    /// Takes over `descriptor`, which is open for writing. `calls` must outlive the sink.
    explicit FileSink(int descriptor, FileCalls &calls = FileCalls::system());
    /// Closes the file if it is still open; what is buffered is dropped.
    ~FileSink() override;
    FileSink(const FileSink &) = delete;
    FileSink &operator=(const FileSink &) = delete;

    [[nodiscard]] bool write(std::span<const char> bytes) override;
    /// Where the system cannot do it once, it is not asked again: not every file system can.
    [[nodiscard]] std::uint64_t copyFrom(int descriptor, std::int64_t offset, std::uint64_t length) override;
    [[nodiscard]] bool finish() override;

    /// Finishes, waits until the bytes are on the disk, and closes. False when any of that, or any write
    /// before it, failed; then the file's content is not to be trusted, whatever a later sync would say
    /// (a failed one leaves its pages marked clean). Network file systems tell of a full disk only here.
    /// Called once.
    [[nodiscard]] bool flushToDisk();

    /// Count of the bytes it has taken.
    [[nodiscard]] std::uint64_t size() const;

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
