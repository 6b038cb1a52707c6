#include "files/FileSink.h"

#include <cerrno>
#include <fcntl.h>
#include <utility>

namespace tallyfold::files {

namespace {

/// Larger buffers save few calls, and the allocator returns them to the system after every file.
constexpr std::size_t bufferSize = 32 * 1024;
constexpr mode_t readableAndWritableForAll = 0666;

} // namespace

std::unique_ptr<FileSink> FileSink::create(const std::filesystem::path &path, std::error_code &error)
{
    return create(AT_FDCWD, path, FileCalls::system(), error);
}

std::unique_ptr<FileSink> FileSink::create(int folder, const std::filesystem::path &name, FileCalls &calls,
                                           std::error_code &error)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const int descriptor =
        uninterrupted([&] { return calls.openAt(folder, name.c_str(), flags, readableAndWritableForAll); });
    if (descriptor < 0) {
        error = {errno, std::generic_category()};
        return nullptr;
    }
    return std::make_unique<FileSink>(descriptor, calls);
}

FileSink::FileSink(int descriptor, FileCalls &calls) : m_calls(calls), m_descriptor(descriptor) {}

FileSink::~FileSink()
{
    if (m_descriptor >= 0) {
        static_cast<void>(m_calls.close(m_descriptor));
    }
}

bool FileSink::write(std::span<const char> bytes)
{
    if (m_failure) {
        return false;
    }
    m_size += bytes.size();
    if (bytes.size() > bufferSize - m_buffer.size() && !flush()) {
        return false;
    }
    if (bytes.size() >= bufferSize) {
        return writeThrough(bytes);
    }
    m_buffer.insert(m_buffer.end(), bytes.begin(), bytes.end());
    return true;
}

std::uint64_t FileSink::copyFrom(int descriptor, std::int64_t offset, std::uint64_t length)
{
    std::uint64_t copied = 0;
    if (m_failure || !m_canCopy || !flush()) {
        return copied;
    }
    while (copied < length) {
        const ssize_t taken = uninterrupted([&] {
            return m_calls.copyRange(descriptor, offset + static_cast<off_t>(copied), m_descriptor,
                                     length - copied);
        });
        if (taken <= 0) { // Reading and writing the rest tells which of the files failed.
            m_canCopy = false;
            break;
        }
        copied += static_cast<std::uint64_t>(taken);
    }
    m_size += copied;
    return copied;
}

bool FileSink::finish()
{
    return !m_failure && flush();
}

bool FileSink::flushToDisk()
{
    if (!finish()) {
        return false;
    }
    if (uninterrupted([this] { return m_calls.syncData(m_descriptor); }) < 0) {
        return fail();
    }
    // A close that was interrupted has closed the file, and the data was synced before.
    if (m_calls.close(std::exchange(m_descriptor, -1)) < 0 && errno != EINTR) {
        return fail();
    }
    return true;
}

std::uint64_t FileSink::size() const
{
    return m_size;
}

std::error_code FileSink::failure() const
{
    return m_failure;
}

bool FileSink::fail()
{
    m_failure = {errno, std::generic_category()};
    return false;
}

bool FileSink::writeThrough(std::span<const char> bytes)
{
    while (!bytes.empty()) {
        const ssize_t taken =
            uninterrupted([&] { return m_calls.write(m_descriptor, bytes.data(), bytes.size()); });
        if (taken == 0) {
            errno = EIO; // A regular file takes at least one byte or fails.
        }
        if (taken <= 0) {
            return fail();
        }
        bytes = bytes.subspan(static_cast<std::size_t>(taken));
    }
    return true;
}

bool FileSink::flush()
{
    const bool written = writeThrough(m_buffer);
    m_buffer.clear();
    return written;
}

} // namespace tallyfold::files
