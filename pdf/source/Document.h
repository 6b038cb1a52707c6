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
    /// Whether that was memory. It is what the whole process has, so that other threads have a part in it.
    bool isMemoryShort = false;

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

/// A PDF file opened for reading, with the empty password. It is read through one descriptor that stays
/// open, so that a file that replaces it under its name is never mixed in.
class Document {
public:
    using Opened = std::variant<std::unique_ptr<Document>, OpenFailure>;

    /// Opens the file at `path`; its structure is repaired in memory where possible. Never throws.
    [[nodiscard]] static Opened open(const std::filesystem::path &path);

    ~Document();
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    /// Whether the owner forbids anything that a stamped copy needs: printing, changing or copying.
    [[nodiscard]] bool isRestricted() const;

    /// Whether the file is encrypted (with an empty password, or it would be `locked`).
    [[nodiscard]] bool isEncrypted() const;
    /// The owner's permissions (PDF 1.7, 7.6.3.2); all true for a file that is not encrypted or has an empty
    /// owner password.
    [[nodiscard]] bool allowsPrinting() const;
    [[nodiscard]] bool allowsChanges() const;
    [[nodiscard]] bool allowsCopying() const;

    /// Number of pages, found by walking the page tree: `/Count` is not trusted. Never negative.
    /// 0 when the tree cannot be read. Never throws.
    [[nodiscard]] std::int64_t pageCount();

    /// Whether the file was modified since it was opened, so that what was read may be inconsistent.
    [[nodiscard]] bool hasChanged() const;

    /// What kept the file from being read so far, if anything did: the system, or memory (`MemoryLimit`) or
    /// time beyond what any file may take, or memory that was not there. The parser goes on after that with
    /// what it has, so nothing that came of it is of use.
    [[nodiscard]] ReadFailure readFailure() const;

    /// The parsed file, for the rooms that copy from it. It throws QPDFExc or another std::exception.
    [[nodiscard]] QPDF &parsed();

    /// The parser keeps every object it has read. `release` frees an indirect object that is not likely to
    /// be needed again; `fetch` gives the object behind a reference and reads it again where it was
    /// released. Objects that may have been released must be reached through `fetch`.
    void release(const QPDFObjectHandle &reference);
    [[nodiscard]] QPDFObjectHandle fetch(const QPDFObjectHandle &reference);

    /// A range of the file in bytes.
    struct Place {
        std::int64_t offset = 0;
        std::uint64_t length = 0;
    };
    /// Where the encoded data of `stream` lies in the file; nothing when it is not where its dictionary
    /// says, or is encrypted: the parser has it then. Throws `std::system_error`.
    [[nodiscard]] std::optional<Place> dataInFile(const QPDFObjectHandle &stream) const;
    /// The file.
    [[nodiscard]] const FileInput &input() const;

private:
    struct Parts;
    explicit Document(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

} // namespace tallyfold::pdf
