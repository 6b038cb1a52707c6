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

/// Bytes of a file for the parser, read through one descriptor in large blocks that are kept for a while.
/// The parser reads a few bytes at a time and jumps about; plain stdio would throw its buffer away at
/// every jump. A file is never mapped: one that shrinks while it is read would end the program.
class FileInput final : public InputSource {
public:
    /// What the thread that reads a file may do meanwhile, in processor time; for every megabyte a second
    /// more. Files that were not made to take long take a hundredth of it.
    static constexpr std::chrono::seconds longest{isUnderSanitizer ? 40 : 4};

    /// The regular file at `path`; null, with the reason in `error`, when it cannot be opened for reading. It
    /// is to be read on this thread.
    [[nodiscard]] static std::shared_ptr<FileInput> open(const std::filesystem::path &path,
                                                         std::error_code &error,
                                                         std::chrono::nanoseconds patience = longest);

    ~FileInput() override = default;
    FileInput(const FileInput &) = delete;
    FileInput &operator=(const FileInput &) = delete;

    /// Skips white space after the end of the line as well. A file is repaired by reading one token at the
    /// beginning of each line, and over many empty lines each of these readings would go to the end of them
    /// all.
    qpdf_offset_t findAndSkipNextEOL() override;
    std::string const &getName() const override;
    qpdf_offset_t tell() override;
    void seek(qpdf_offset_t offset, int whence) override;
    void rewind() override;
    size_t read(char *destination, size_t length) override;
    void unreadCh(char ch) override;

    /// Reads up to `length` bytes at `offset`, whatever was read before; fewer only where the file ends.
    /// Throws `std::system_error`.
    std::size_t readAt(qpdf_offset_t offset, char *destination, std::size_t length) const;

    /// For calls that copy from the file; open as long as this is.
    [[nodiscard]] int descriptor() const;
    /// Whether the parser was refused to read on: after many times the length of the file or a long time, as
    /// files can be made so that it goes round and round; so deep in objects that need each other that the
    /// stack is used up; or when memory was refused to it, which it may not have noticed.
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

    FileInput(files::Descriptor file, const files::FileStatus &status, std::chrono::nanoseconds patience);
    const Block &blockAt(qpdf_offset_t offset);
    /// Notes that the parser read so many bytes. Throws `std::runtime_error` when it may not read on.
    void count(qpdf_offset_t bytes);

    static constexpr qpdf_offset_t blockSize = 8 * 1024;
    static constexpr std::size_t blockCount = 128;

    files::Descriptor m_file;
    files::FileStatus m_atOpening;
    qpdf_offset_t m_position = 0;
    qpdf_offset_t m_read = 0;            ///< How much the parser read so far.
    std::chrono::nanoseconds m_deadline; ///< In processor time of the thread.
    qpdf_offset_t m_lastLook = 0;        ///< At the time; how much was read then.
    bool m_isExhausted = false;
    mutable std::error_code m_failure;
    std::array<Block, blockCount> m_blocks;
    std::string m_name;
};

} // namespace tallyfold::pdf
