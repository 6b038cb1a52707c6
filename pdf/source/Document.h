#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <variant>

#include <qpdf/QPDF.hh>

namespace tallyfold::pdf {

class FileInput;

/// Why a file could not be read, as far as it is known.
struct ReadFailure {
    std::error_code error; ///< The system's; no error where it gave the bytes.
    /// Whether reading took more memory or time than any file may take, so that nothing is known of the
    /// file.
    bool isLimitReached = false;

    /// Whether there was one.
    explicit operator bool() const
    {
        return error || isLimitReached;
    }
    bool operator==(const ReadFailure &) const = default;
};

/// Why a file gives no document.
struct OpenFailure {
    enum class Kind {
        unreadable, ///< Not a PDF, damaged beyond repair, or not there.
        locked,     ///< Needs a password to open.
    };
    Kind kind = Kind::unreadable;
    ReadFailure cause; ///< Of an unreadable one; of a locked one it says nothing.
};

/// A PDF file opened for reading, with the empty password. The file is read through one descriptor
/// that stays open, so that what was opened is what is read, whatever happens to the name.
class Document {
public:
    using Opened = std::variant<std::unique_ptr<Document>, OpenFailure>;

    /// Opens the file at `path`, repairing its structure in memory where that is possible. Never throws.
    [[nodiscard]] static Opened open(const std::filesystem::path &path);

    ~Document();
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    /// Whether the owner denies a reader anything that a stamped copy takes: printing, changes or copying.
    [[nodiscard]] bool isRestricted() const;

    /// Whether the file is encrypted (with an empty password, or it would be `locked`).
    [[nodiscard]] bool isEncrypted() const;
    /// What the owner lets a reader do (PDF 1.7, 7.6.3.2); all true for a file that is not encrypted
    /// and for one whose owner password is empty.
    [[nodiscard]] bool allowsPrinting() const;
    [[nodiscard]] bool allowsChanges() const;
    [[nodiscard]] bool allowsCopying() const;

    /// Number of pages, found by walking the page tree: `/Count` is not trusted. Never negative.
    /// 0 when the tree cannot be read. Never throws.
    [[nodiscard]] std::int64_t pageCount();

    /// Whether the file was written to since it was opened, so that what was read of it may not fit together.
    [[nodiscard]] bool hasChanged() const;

    /// What kept the file from being read so far, if anything did: the system, or memory (`MemoryLimit`) or
    /// time beyond what any file may take, or memory that was not there. The parser goes on after that with
    /// what it has, so nothing that came of it is of use.
    [[nodiscard]] ReadFailure readFailure() const;

    /// The parsed file, for the parts of this layer that copy from it. What it throws is QPDFExc
    /// or another std::exception.
    [[nodiscard]] QPDF &parsed();

    /// The parser keeps all it has read. `release` gives back the memory of an indirect object that
    /// is not likely to be needed again; `fetch` gives the object behind a reference even so, read
    /// anew where it was released. What may have been released must be reached through `fetch`.
    void release(const QPDFObjectHandle &reference);
    [[nodiscard]] QPDFObjectHandle fetch(const QPDFObjectHandle &reference);

    /// A stretch of the file, in bytes.
    struct Place {
        std::int64_t offset = 0;
        std::uint64_t length = 0;
    };
    /// Where the data of `stream` lies in the file, still encoded; nothing when it does not lie there as its
    /// dictionary says, or is encrypted, and has to be asked of the parser. Throws `std::system_error`.
    [[nodiscard]] std::optional<Place> dataInFile(const QPDFObjectHandle &stream) const;
    /// The file.
    [[nodiscard]] const FileInput &input() const;

private:
    struct Parts;
    explicit Document(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

} // namespace tallyfold::pdf
