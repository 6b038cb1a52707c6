#pragma once

#include "files/Descriptor.h"
#include "files/FileStatus.h"
#include "files/UnderSanitizer.h"

#include <qpdf/InputSource.hh>

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace tallyfold::pdf {

/// The parser's input: a file, read through one descriptor in large blocks, some of which are cached. The
/// parser reads a few bytes at a time and seeks much; stdio would discard its buffer at every seek. The file
/// is not mapped: reading a mapped file that was truncated ends the program.
class FileInput final : public InputSource {
public:
    /// Processor time that the reading thread may use, and a second more for every megabyte. Ordinary files
    /// take a hundredth of it.
    static constexpr std::chrono::seconds defaultCpuTimeLimit{isUnderSanitizer ? 40 : 4};

    /// The regular file at `path`, to be read on this thread; null, with the reason in `error`, when it
    /// cannot be opened.
    [[nodiscard]] static std::shared_ptr<FileInput>
    open(const std::filesystem::path &path, std::error_code &error,
         std::chrono::nanoseconds cpuTimeLimit = defaultCpuTimeLimit);

    ~FileInput() override = default;
    FileInput(const FileInput &) = delete;
    FileInput &operator=(const FileInput &) = delete;

    /// Skips white space after the end of the line as well. Repairing a file reads one token at the
    /// beginning of each line, which over many empty lines would read to the end of them each time.
    qpdf_offset_t findAndSkipNextEOL() override;
    std::string const &getName() const override;
    qpdf_offset_t tell() override;
    void seek(qpdf_offset_t offset, int whence) override;
    void rewind() override;
    size_t read(char *destination, size_t length) override;
    void unreadCh(char ch) override;

    /// Reads up to `length` bytes at `offset`; fewer only at the end of the file. Throws
    /// `std::system_error`.
    std::size_t readAt(qpdf_offset_t offset, char *destination, std::size_t length) const;

    /// The open file, for calls that copy from it; valid as long as this is.
    [[nodiscard]] int descriptor() const;
    /// Whether reading was refused to the parser: after many times the length of the file or the time limit,
    /// since files can send it in circles; when the stack is nearly used up; or after an allocation failed,
    /// which it may have ignored.
    [[nodiscard]] bool isExhausted() const;
    /// Length of the file in bytes when it was opened.
    [[nodiscard]] qpdf_offset_t size() const;
    /// Whether size, modification or change time differ from what they were at opening.
    [[nodiscard]] bool hasChanged() const;
    /// The system's reason why the file could not be read; no error while it could. The parser may have gone
    /// on with what it had.
    [[nodiscard]] std::error_code failure() const;

private:
    struct Block {
        qpdf_offset_t start = -1;
        std::vector<char> bytes;
    };

    FileInput(files::Descriptor file, const files::FileStatus &status, std::chrono::nanoseconds cpuTimeLimit);
    const Block &blockAt(qpdf_offset_t offset);
    /// Counts bytes that the parser read. Throws `std::runtime_error` beyond a limit.
    void count(qpdf_offset_t bytes);

    static constexpr qpdf_offset_t blockSize = 8 * 1024;
    static constexpr std::size_t blockCount = 128;

    files::Descriptor m_file;
    files::FileStatus m_atOpening;
    qpdf_offset_t m_position = 0;
    qpdf_offset_t m_read = 0;            ///< Bytes that the parser read so far.
    std::chrono::nanoseconds m_deadline; ///< Processor time of the thread.
    qpdf_offset_t m_lastLook = 0;        ///< The value of `m_read` when the time was last checked.
    bool m_isExhausted = false;
    mutable std::error_code m_failure;
    std::array<Block, blockCount> m_blocks;
    std::string m_name;
};

} // namespace tallyfold::pdf
