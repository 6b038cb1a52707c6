#pragma once

#include "files/WrittenFile.h"
#include "pdf/syntax/Inflater.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Verifies a finished copy as a viewer opens it: from its end to the cross-references, catalog, page tree
/// and last page. It accepts only files of `StreamingOutput` and `OutputPageTree`, and reads a few
/// kilobytes, so that it takes little of the time that writing takes. Objects before the last ones are not
/// read. Can be used for many copies, one after the other.
class CopyVerifier {
public:
    /// Whether `file` is complete and leads to a page tree of `pages` pages, at least one, and to the last
    /// of them. Damaged data gives false and never fails otherwise.
    [[nodiscard]] bool verify(const files::WrittenFile &file, std::int64_t pages);

private:
    /// The position of an object: an offset in the file, or an object stream and the index in it.
    struct Entry {
        std::uint64_t kind = 0;
        std::uint64_t where = 0;
        std::uint64_t index = 0;
    };
    /// A stream of the file with its encoded data. Valid until the next `view`.
    struct Stream {
        std::uint64_t number = 0;
        std::string_view entries;
        std::string_view data;
        std::uint64_t end = 0; ///< The offset after it.
    };

    [[nodiscard]] bool readEnd();
    /// Gives the object number of the catalog.
    [[nodiscard]] std::optional<std::uint64_t> readCrossReferences();
    [[nodiscard]] bool unpackRows(const Stream &stream, std::uint64_t count);
    [[nodiscard]] Entry entryOf(std::uint64_t number) const;
    /// `length` bytes of the file; empty beyond its end. Valid until the next `view`.
    [[nodiscard]] std::string_view view(std::uint64_t offset, std::uint64_t length);
    /// The start of what is at `offset`; empty beyond the end. Valid until the next `view`.
    [[nodiscard]] std::string_view headAt(std::uint64_t offset);
    [[nodiscard]] std::optional<Stream> streamAt(std::uint64_t offset);
    [[nodiscard]] bool unpackObjects(std::uint64_t number);
    [[nodiscard]] std::string_view objectInStream(std::uint64_t number, std::uint64_t index) const;
    /// The syntax of an object in an object stream, or the beginning of one outside. Valid until the next
    /// `object`.
    [[nodiscard]] std::string_view object(std::uint64_t number);
    [[nodiscard]] bool hasLastPage(std::uint64_t topNode, std::uint64_t pages);

    const files::WrittenFile *m_file = nullptr;
    Inflater m_inflater;

    std::string m_end; ///< The last bytes of the file.
    std::uint64_t m_endStart = 0;
    std::string m_read; ///< The last bytes read before `m_end`.
    std::string m_rows; ///< The cross-reference entries, eight bytes each.

    std::string m_objects; ///< The object stream last decompressed.
    std::string_view m_objectsHead;
    std::string_view m_objectsBody;
    std::uint64_t m_objectsNumber = 0; ///< Its object number; 0 for none.
};

} // namespace tallyfold::pdf
