#pragma once

#include "files/WrittenFile.h"
#include "pdf/syntax/Inflater.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Follows a finished copy back from its end, as a viewer does that opens it: cross-references, catalog,
/// page tree, last page. It knows no other files than those `StreamingOutput` and `OutputPageTree` write,
/// and reads a few kilobytes of them, so that it takes a small part of the time that writing them took. What
/// lies before the last objects is not looked at. Good for many copies, one after the other.
class CopyProof {
public:
    /// Whether `file` has all its bytes, leads to a page tree of `pages` pages, at least one, and to the last
    /// of them. Damage in the places it reads never gets it further than false.
    [[nodiscard]] bool holds(const files::WrittenFile &file, std::int64_t pages);

private:
    /// Where an object lies: an offset in the file, or an object stream and the place in it.
    struct Entry {
        std::uint64_t kind = 0;
        std::uint64_t where = 0;
        std::uint64_t index = 0;
    };
    /// A stream of the file, its data still encoded. Valid until the next view.
    struct Stream {
        std::uint64_t number = 0;
        std::string_view entries;
        std::string_view data;
        std::uint64_t end = 0; ///< Offset of what follows it in the file.
    };

    [[nodiscard]] bool readEnd();
    /// Gives the number of the catalog.
    [[nodiscard]] std::optional<std::uint64_t> readCrossReferences();
    [[nodiscard]] bool unpackRows(const Stream &stream, std::uint64_t count);
    [[nodiscard]] Entry entryOf(std::uint64_t number) const;
    /// `length` bytes of the file; none when they are not there. Valid until the next view.
    [[nodiscard]] std::string_view view(std::uint64_t offset, std::uint64_t length);
    /// The beginning of what lies there; none beyond the end. Valid until the next view.
    [[nodiscard]] std::string_view headAt(std::uint64_t offset);
    [[nodiscard]] std::optional<Stream> streamAt(std::uint64_t offset);
    [[nodiscard]] bool unpackObjects(std::uint64_t number);
    [[nodiscard]] std::string_view objectInStream(std::uint64_t number, std::uint64_t index) const;
    /// An object of an object stream, or the beginning of one that lies in the file by itself. Valid until
    /// the next one.
    [[nodiscard]] std::string_view object(std::uint64_t number);
    [[nodiscard]] bool hasLastPage(std::uint64_t topNode, std::uint64_t pages);

    const files::WrittenFile *m_file = nullptr;
    Inflater m_inflater;

    std::string m_end; ///< The last bytes of the file.
    std::uint64_t m_endStart = 0;
    std::string m_read; ///< What was last read besides.
    std::string m_rows; ///< The cross-references, eight bytes each.

    std::string m_objects; ///< The object stream last unpacked.
    std::string_view m_objectsHead;
    std::string_view m_objectsBody;
    std::uint64_t m_objectsNumber = 0; ///< Its number; 0 when there is none.
};

} // namespace tallyfold::pdf
