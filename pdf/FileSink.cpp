#include "pdf/FileSink.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace tallyfold::pdf {

namespace {

constexpr std::size_t bufferSize = 256 * 1024;

} // namespace

std::unique_ptr<FileSink> FileSink::create(const std::filesystem::path &path)
{
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    return descriptor < 0 ? nullptr : std::make_unique<FileSink>(descriptor);
}

FileSink::FileSink(int descriptor) : m_descriptor(descriptor)
{
    m_buffer.reserve(bufferSize);
}

FileSink::~FileSink()
{
    (void)close(); // Only reached with an open file when the copy is given up.
}

bool FileSink::writeOut(std::span<const char> bytes)
{
    while (!bytes.empty() && !m_hasFailed) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            m_hasFailed = true;
            break;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return !m_hasFailed;
}

bool FileSink::write(std::span<const char> bytes)
{
    if (m_buffer.size() + bytes.size() <= bufferSize) {
        m_buffer.insert(m_buffer.end(), bytes.begin(), bytes.end());
        return !m_hasFailed;
    }
    if (!finish()) {
        return false;
    }
    if (bytes.size() >= bufferSize) {
        return writeOut(bytes);
    }
    m_buffer.assign(bytes.begin(), bytes.end());
    return true;
}

bool FileSink::finish()
{
    const bool isWritten = writeOut(m_buffer);
    m_buffer.clear();
    return isWritten;
}

bool FileSink::flushToDisk()
{
    if (!m_hasFailed && ::fsync(m_descriptor) != 0) {
        m_hasFailed = true;
    }
    return close();
}

bool FileSink::close()
{
    const int descriptor = std::exchange(m_descriptor, -1);
    // Interrupted or not, the descriptor is closed then.
    if (descriptor >= 0 && ::close(descriptor) != 0 && errno != EINTR) {
        m_hasFailed = true;
    }
    return !m_hasFailed;
}

} // namespace tallyfold::pdf
