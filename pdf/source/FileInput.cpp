#include "pdf/source/FileInput.h"

#include "files/FileCalls.h"
#include "files/Usage.h"
#include "pdf/source/MemoryLimit.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace tallyfold::pdf {

std::shared_ptr<FileInput> FileInput::open(const std::filesystem::path &path, std::error_code &error,
                                           std::chrono::nanoseconds cpuTimeLimit)
{
    files::Descriptor file = files::Descriptor::ofFile(path);
    if (!file.isOpen()) {
        error = std::error_code(errno, std::generic_category());
        return nullptr;
    }
    error.clear();
    const std::optional<files::FileStatus> status = files::FileStatus::of(file.number(), error);
    if (status && status->kind != files::FileStatus::Kind::regular) {
        error = make_error_code(status->kind == files::FileStatus::Kind::folder ? std::errc::is_a_directory
                                                                                : std::errc::not_supported);
    }
    return error ? nullptr
                 : std::shared_ptr<FileInput>(new FileInput(std::move(file), *status, cpuTimeLimit));
}

FileInput::FileInput(files::Descriptor file, const files::FileStatus &status,
                     std::chrono::nanoseconds cpuTimeLimit)
    : m_file(std::move(file)),
      m_atOpening(status),
      m_deadline(files::processorTimeOfThread() + cpuTimeLimit + std::chrono::microseconds(status.size))
{
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
    // Ordinary files are read a few times at most.
    constexpr qpdf_offset_t times = 50;
    constexpr qpdf_offset_t forSmallFiles = 256 * 1024 * 1024;
    m_read += bytes;
    m_isExhausted = m_isExhausted || m_read > forSmallFiles + times * m_atOpening.size ||
                    files::isStackNearlyFull() || MemoryLimit::wasReached();
    if (m_read - m_lastLook > 64 * 1024) { // Reading the clock is slow.
        m_lastLook = m_read;
        m_isExhausted = m_isExhausted || files::processorTimeOfThread() > m_deadline;
    }
    if (m_isExhausted) {
        throw std::runtime_error("the file is too much for the parser");
    }
}

qpdf_offset_t FileInput::size() const
{
    return m_atOpening.size;
}

bool FileInput::hasChanged() const
{
    std::error_code error;
    return files::FileStatus::of(m_file.number(), error) != m_atOpening;
}

std::error_code FileInput::failure() const
{
    return m_failure;
}

std::size_t FileInput::readAt(qpdf_offset_t offset, char *destination, std::size_t length) const
{
    std::error_code error;
    const std::size_t have =
        files::readUpTo(files::FileCalls::system(), m_file.number(), static_cast<std::uint64_t>(offset),
                        {destination, length}, error);
    if (error) {
        m_failure = error;
        throw std::system_error(error, "read");
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
    block.bytes.resize(static_cast<std::size_t>(std::min(blockSize, m_atOpening.size - start)));
    block.bytes.resize(
        readAt(start, block.bytes.data(), block.bytes.size())); // Less when the file was truncated.
    block.start = start;
    return block;
}

size_t FileInput::read(char *destination, size_t length)
{
    last_offset = m_position;
    std::size_t done = 0;
    // The data of a large stream is read directly: it would only evict the cached blocks.
    if (length >= static_cast<std::size_t>(blockSize) && m_position < m_atOpening.size) {
        done = readAt(m_position, destination,
                      std::min(length, static_cast<std::size_t>(m_atOpening.size - m_position)));
        m_position += static_cast<qpdf_offset_t>(done);
    }
    while (done < length && m_position < m_atOpening.size) {
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
        m_position = m_atOpening.size;
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
    qpdf_offset_t found = m_atOpening.size;
    bool inLineEnd = false;
    while (m_position < m_atOpening.size) {
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
    m_position = m_atOpening.size;
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
    const qpdf_offset_t base = whence == SEEK_SET ? 0 : whence == SEEK_END ? m_atOpening.size : m_position;
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
