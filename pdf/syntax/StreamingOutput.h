#pragma once

#include "files/ByteSink.h"
#include "pdf/syntax/Deflater.h"
#include "pdf/syntax/OutputObjects.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyfold::pdf {

/// Writes a PDF file from front to back. Objects are written as soon as they are complete, small ones in
/// object streams (PDF 1.7, 7.5.7); only their positions stay in memory. Equal calls give equal bytes: there
/// is no time stamp and no random identifier.
class StreamingOutput final : public OutputObjects {
public:
    /// Writes the file's header to `sink`, which must outlive this.
    explicit StreamingOutput(files::ByteSink &sink);

    int reserve() override;
    void writeObject(int number, std::string_view syntax) override;
    void writeStream(int number, std::string_view entries, std::string_view data) override;
    void writeEncodedStream(int number, std::string_view entries, std::string_view bytes) override;

    /// A stream in parts, for data too large for memory: between `beginStream` and `endStream` only
    /// `appendToStream` and `copyToStream` may be called. A length that is not known beforehand becomes an
    /// object of its own.
    void beginStream(int number, std::string_view entries,
                     std::optional<std::uint64_t> length = std::nullopt);
    void appendToStream(std::string_view bytes);
    /// As `ByteSink::copyFrom`.
    [[nodiscard]] std::uint64_t copyToStream(int descriptor, std::int64_t offset, std::uint64_t length);
    void endStream();

    /// Writes the cross-reference stream and the end of the file; `catalog` is the object number of the
    /// document catalog. A reserved object that was never written becomes null.
    void finish(int catalog);

    /// Whether a write has failed; later calls have no effect then.
    [[nodiscard]] bool hasFailed() const;

private:
    enum class Kind : std::uint8_t { free, inFile, inObjectStream };
    /// The position of an object: an offset in the file, or an object stream and the index in it.
    struct Entry {
        std::uint64_t where = 0;
        std::uint32_t index = 0;
        Kind kind = Kind::free;
    };

    void put(std::string_view bytes);
    void beginObject(int number);
    void putStreamHead(int number, std::string_view entries, std::string_view lengthSyntax);
    void flushObjectStream();
    [[nodiscard]] std::string crossReferences() const;

    files::ByteSink *m_sink;
    Deflater m_deflater;
    std::vector<Entry> m_entries;
    std::uint64_t m_offset = 0;
    bool m_hasFailed = false;

    std::vector<std::pair<int, std::size_t>>
        m_gathered; ///< Number and start of each object in `m_gatheredSyntax`.
    std::string m_gatheredSyntax;
    std::string m_scratch;

    int m_lengthObject = 0; ///< 0 when the stream has its length itself.
    std::uint64_t m_streamStart = 0;
};

} // namespace tallyfold::pdf
