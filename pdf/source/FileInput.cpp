#include "pdf/source/FileInput.h"

#include "pdf/source/MemoryLimit.h"
#include "pdf/source/StackDepth.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tallyfold::pdf {

namespace {

/// The processor time that this thread has used.
std::chrono::nanoseconds timeOfThread()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

std::shared_ptr<FileInput> FileInput::open(const std::filesystem::path &path, std::error_code &error,
                                           std::chrono::nanoseconds patience)
{
    files::Descriptor file = files::Descriptor::ofFile(path);
    if (!file.isOpen()) {
        error = std::error_code(errno, std::generic_category());
        return nullptr;
    }
    Stamp stamp;
    error = readStamp(file.number(), stamp);
    return error ? nullptr : std::shared_ptr<FileInput>(new FileInput(std::move(file), stamp, patience));
}

FileInput::FileInput(files::Descriptor file, const Stamp &stamp, std::chrono::nanoseconds patience)
    : m_file(std::move(file)),
      m_stamp(stamp),
      m_deadline(timeOfThread() + patience + std::chrono::microseconds(stamp.size))
{
}

std::error_code FileInput::readStamp(int descriptor, Stamp &stamp)
{
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        return {errno, std::generic_category()};
    }
    if (!S_ISREG(status.st_mode)) {
        return make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                       : std::errc::not_supported);
    }
    stamp = {status.st_size,
             {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec, status.st_ctim.tv_nsec}};
    return {};
}

int FileInput::descriptor() const
{
    return m_file.number();
}

bool FileInput::isExhausted() const
{
    return m_isExhausted;
}

void FileInput::count(qpdf_offset_t bytes)
{
    // Files that were not made to be read again and again are read a few times.
    constexpr qpdf_offset_t times = 50;
    constexpr qpdf_offset_t forSmallFiles = 256 * 1024 * 1024;
    m_read += bytes;
    m_isExhausted = m_isExhausted || m_read > forSmallFiles + times * m_stamp.size || isStackNearlyFull() ||
                    MemoryLimit::wasReached();
    if (m_read - m_lastLook > 64 * 1024) { // The clock is slow to read.
        m_lastLook = m_read;
        m_isExhausted = m_isExhausted || timeOfThread() > m_deadline;
    }
    if (m_isExhausted) {
        throw std::runtime_error("the file is too much for the parser");
    }
}

qpdf_offset_t FileInput::size() const
{
    return m_stamp.size;
}

bool FileInput::hasChanged() const
{
    Stamp now;
    return readStamp(m_file.number(), now) || now != m_stamp;
}

std::error_code FileInput::failure() const
{
    return m_failure;
}

std::size_t FileInput::readAt(qpdf_offset_t offset, char *destination, std::size_t length) const
{
    std::size_t have = 0;
    while (have < length) {
        const ssize_t got = ::pread(m_file.number(), destination + have, length - have,
                                    offset + static_cast<qpdf_offset_t>(have));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            m_failure = std::error_code(errno, std::generic_category());
            throw std::system_error(m_failure, "read");
        }
        if (got == 0) {
            break;
        }
        have += static_cast<std::size_t>(got);
    }
    return have;
}

const FileInput::Block &FileInput::blockAt(qpdf_offset_t offset)
{
    const qpdf_offset_t number = offset / blockSize;
    Block &block = m_blocks[static_cast<std::size_t>(number) % blockCount];
    const qpdf_offset_t start = number * blockSize;
    if (block.start == start) {
        return block;
    }
    block.start = -1;
    block.bytes.resize(static_cast<std::size_t>(std::min(blockSize, m_stamp.size - start)));
    block.bytes.resize(
        readAt(start, block.bytes.data(), block.bytes.size())); // Less when the file has shrunk.
    block.start = start;
    return block;
}

size_t FileInput::read(char *destination, size_t length)
{
    last_offset = m_position;
    std::size_t done = 0;
    // The data of a large stream goes where it is wanted, past the blocks, which it would only push out.
    if (length >= static_cast<std::size_t>(blockSize) && m_position < m_stamp.size) {
        done = readAt(m_position, destination,
                      std::min(length, static_cast<std::size_t>(m_stamp.size - m_position)));
        m_position += static_cast<qpdf_offset_t>(done);
    }
    while (done < length && m_position < m_stamp.size) {
        const Block &block = blockAt(m_position);
        const auto inBlock = static_cast<std::size_t>(m_position - block.start);
        if (inBlock >= block.bytes.size()) {
            break;
        }
        const std::size_t part = std::min(length - done, block.bytes.size() - inBlock);
        std::memcpy(destination + done, block.bytes.data() + inBlock, part);
        done += part;
        m_position += static_cast<qpdf_offset_t>(part);
    }
    count(static_cast<qpdf_offset_t>(done));
    if (done == 0 && length > 0) { // The parser expects a failed read to stand at the end.
        m_position = m_stamp.size;
        last_offset = m_position;
    }
    return done;
}

qpdf_offset_t FileInput::findAndSkipNextEOL()
{
    const auto isLineEnd = [](char ch) { return ch == '\r' || ch == '\n'; };
    const auto isWhiteSpace = [&](char ch) {
        return isLineEnd(ch) || ch == ' ' || ch == '\t' || ch == '\f' || ch == '\0';
    };
    qpdf_offset_t found = m_stamp.size;
    bool inLineEnd = false;
    while (m_position < m_stamp.size) {
        const Block &block = blockAt(m_position);
        const auto inBlock = static_cast<std::size_t>(m_position - block.start);
        if (inBlock >= block.bytes.size()) {
            break;
        }
        const auto from = block.bytes.begin() + static_cast<std::ptrdiff_t>(inBlock);
        const auto stop = inLineEnd ? std::find_if_not(from, block.bytes.end(), isWhiteSpace)
                                    : std::find_if(from, block.bytes.end(), isLineEnd);
        m_position += stop - from;
        count(stop - from);
        if (stop == block.bytes.end()) {
            continue;
        }
        if (inLineEnd) {
            return found;
        }
        found = m_position;
        inLineEnd = true;
    }
    m_position = m_stamp.size;
    return found;
}

std::string const &FileInput::getName() const
{
    return m_name;
}

qpdf_offset_t FileInput::tell()
{
    return m_position;
}

void FileInput::seek(qpdf_offset_t offset, int whence)
{
    const qpdf_offset_t base = whence == SEEK_SET ? 0 : whence == SEEK_END ? m_stamp.size : m_position;
    if (offset < -base) {
        throw std::runtime_error("seek before the beginning of the file");
    }
    m_position = base + offset;
}

void FileInput::rewind()
{
    m_position = 0;
}

void FileInput::unreadCh(char)
{
    if (m_position > 0) {
        --m_position;
    }
}

} // namespace tallyfold::pdf
