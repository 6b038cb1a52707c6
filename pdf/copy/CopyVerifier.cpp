#include "pdf/copy/CopyVerifier.h"

#include "pdf/syntax/Spelling.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>

namespace tallyfold::pdf {

namespace {

using spelling::compressed;
using spelling::dataEnd;
using spelling::dataStart;
using spelling::dictionaryEnd;
using spelling::dictionaryStart;
using spelling::objectStart;
using spelling::referenceEnd;
using spelling::rowLength;

/// The end of a small copy holds all that is verified, and takes one read.
constexpr std::uint64_t endSize = 16 * 1024;
/// Enough for the dictionary of a cross-reference or object stream, and for the start of any object.
constexpr std::uint64_t headSize = 512;
/// More than any object stream of `StreamingOutput`, decompressed.
constexpr std::size_t maxObjectStreamSize = 256 * 1024;
/// The maximum compression ratio of Flate.
constexpr std::uint64_t maxExpansion = 1032;
/// A deeper tree has more pages than fit in a file.
constexpr int maxTreeDepth = 10;

/// The number that no object has.
constexpr std::uint64_t noObject = 0;

/// Types of cross-reference entries (PDF 1.7, table 18).
constexpr std::uint64_t inFile = 1;
constexpr std::uint64_t inObjectStream = 2;

/// Reads PDF syntax without alternatives.
class Cursor {
public:
    explicit Cursor(std::string_view text) : m_rest(text) {}

    bool take(std::string_view expected)
    {
        const bool isThere = m_rest.starts_with(expected);
        if (isThere) {
            m_rest.remove_prefix(expected.size());
        }
        return isThere;
    }

    std::optional<std::uint64_t> number()
    {
        std::uint64_t value = 0;
        const auto [end, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value);
        if (error != std::errc()) {
            return std::nullopt;
        }
        m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
        return value;
    }

    /// "12 0 R".
    std::optional<std::uint64_t> reference()
    {
        const auto value = number();
        return value && take(referenceEnd) ? value : std::nullopt;
    }

    [[nodiscard]] std::string_view rest() const
    {
        return m_rest;
    }

private:
    std::string_view m_rest;
};

/// The number after `key` in entries without strings.
std::optional<std::uint64_t> numberBehind(std::string_view entries, std::string_view key)
{
    const std::size_t place = entries.find(key);
    return place == std::string_view::npos ? std::nullopt
                                           : Cursor(entries.substr(place + key.size())).number();
}

std::uint64_t bigEndian(std::string_view bytes)
{
    std::uint64_t value = 0;
    for (const char byte : bytes) {
        value = value << 8U | static_cast<unsigned char>(byte);
    }
    return value;
}

/// A node of the page tree as `OutputPageTree` writes it.
struct Node {
    std::uint64_t parent = 0; ///< 0 for the topmost.
    std::uint64_t kids = 0;
    std::uint64_t lastKid = 0;
    std::uint64_t pages = 0;
};

std::optional<Node> nodeIn(std::string_view object)
{
    Cursor cursor(object);
    Node node;
    if (!cursor.take(dictionaryStart) || !cursor.take("/Type/Pages")) {
        return std::nullopt;
    }
    if (cursor.take("/Parent ")) {
        node.parent = cursor.reference().value_or(noObject);
    }
    if (!cursor.take("/Kids[")) {
        return std::nullopt;
    }
    while (const auto kid = cursor.reference()) {
        node.lastKid = *kid;
        ++node.kids;
        (void)cursor.take(" ");
    }
    if (!cursor.take("]/Count ")) {
        return std::nullopt;
    }
    node.pages = cursor.number().value_or(0);
    return cursor.take(dictionaryEnd) ? std::optional(node) : std::nullopt;
}

} // namespace

bool CopyVerifier::verify(const files::WrittenFile &file, std::int64_t pages)
{
    m_file = &file;
    m_objectsNumber = 0;
    if (!readEnd()) {
        return false;
    }
    const auto root = readCrossReferences();
    if (!root) {
        return false;
    }
    Cursor catalog(object(*root));
    return catalog.take(dictionaryStart) && catalog.take("/Type/Catalog/Pages ") &&
           hasLastPage(catalog.reference().value_or(noObject), static_cast<std::uint64_t>(pages));
}

bool CopyVerifier::readEnd()
{
    const bool isRead = m_file->readEnd(endSize, m_end);
    m_endStart = m_file->size() - m_end.size();
    return isRead && view(0, spelling::fileStart.size()) == spelling::fileStart;
}

std::string_view CopyVerifier::view(std::uint64_t offset, std::uint64_t length)
{
    const std::uint64_t size = m_file->size();
    if (offset > size || length > size - offset) {
        return {};
    }
    if (offset >= m_endStart) {
        return std::string_view(m_end).substr(offset - m_endStart, length);
    }
    if (m_read.size() < length) {
        m_read.resize(length);
    }
    return m_file->read(offset, std::span(m_read.data(), length)) ? std::string_view(m_read).substr(0, length)
                                                                  : std::string_view();
}

std::string_view CopyVerifier::headAt(std::uint64_t offset)
{
    const std::uint64_t size = m_file->size();
    return view(offset, std::min(headSize, size - std::min(offset, size)));
}

std::optional<CopyVerifier::Stream> CopyVerifier::streamAt(std::uint64_t offset)
{
    const std::string_view head = headAt(offset);
    Cursor cursor(head);
    const auto number = cursor.number();
    if (!number || !cursor.take(objectStart) || !cursor.take(dictionaryStart)) {
        return std::nullopt;
    }
    const std::size_t entriesStart = head.size() - cursor.rest().size();
    const std::size_t entriesEnd = head.find(dataStart, entriesStart);
    if (entriesEnd == std::string_view::npos) {
        return std::nullopt;
    }
    const auto length = numberBehind(head.substr(entriesStart, entriesEnd - entriesStart), "/Length ");
    if (!length || *length > m_file->size()) {
        return std::nullopt;
    }
    const std::size_t start = entriesEnd + dataStart.size();
    const std::string_view whole = view(offset, start + *length + dataEnd.size());
    if (!whole.ends_with(dataEnd)) {
        return std::nullopt;
    }
    return Stream{*number, whole.substr(entriesStart, entriesEnd - entriesStart),
                  whole.substr(start, *length), offset + whole.size()};
}

std::optional<std::uint64_t> CopyVerifier::readCrossReferences()
{
    constexpr std::string_view mark = spelling::crossReferenceStart;
    const std::size_t place = m_end.rfind(mark);
    if (place == std::string::npos) {
        return std::nullopt;
    }
    Cursor cursor(std::string_view(m_end).substr(place + mark.size()));
    const std::uint64_t start = cursor.number().value_or(0); // Where the header lies, and no stream.
    if (cursor.rest() != spelling::fileEnd) {
        return std::nullopt;
    }
    const auto stream = streamAt(start);
    if (!stream || stream->end != m_endStart + place) {
        return std::nullopt;
    }
    Cursor entries(stream->entries);
    if (!entries.take("/Type/XRef/W") || !entries.take(spelling::columnWidths)) {
        return std::nullopt;
    }
    // It is the last object, and has an entry of its own.
    const bool isWhole = numberBehind(stream->entries, "/Size ") == stream->number + 1 &&
                         unpackRows(*stream, stream->number + 1);
    return isWhole ? numberBehind(stream->entries, "/Root ") : std::nullopt;
}

bool CopyVerifier::unpackRows(const Stream &stream, std::uint64_t count)
{
    if (stream.entries.find(compressed) == std::string_view::npos) {
        m_rows.assign(stream.data);
        return m_rows.size() / rowLength == count;
    }
    constexpr std::size_t predictedLength = rowLength + 1;
    if (count > stream.data.size() * maxExpansion) {
        return false;
    }
    m_rows.resize(count * predictedLength);
    if (m_inflater.expand(stream.data, m_rows.data(), m_rows.size()) !=
        static_cast<std::ptrdiff_t>(m_rows.size())) {
        return false;
    }
    // In place, since rows become shorter: each is the difference from the one above.
    std::array<unsigned char, rowLength> above{};
    for (std::size_t row = 0; row < count; ++row) {
        for (std::size_t column = 0; column < rowLength; ++column) {
            const char difference = m_rows[row * predictedLength + 1 + column];
            above[column] =
                static_cast<unsigned char>(above[column] + static_cast<unsigned char>(difference));
            m_rows[row * rowLength + column] = static_cast<char>(above[column]);
        }
    }
    m_rows.resize(count * rowLength);
    return true;
}

CopyVerifier::Entry CopyVerifier::entryOf(std::uint64_t number) const
{
    if (number >= m_rows.size() / rowLength) {
        return {};
    }
    const std::string_view row = std::string_view(m_rows).substr(number * rowLength, rowLength);
    return {bigEndian(row.substr(0, 1)), bigEndian(row.substr(1, 5)), bigEndian(row.substr(6, 2))};
}

bool CopyVerifier::unpackObjects(std::uint64_t number)
{
    if (m_objectsNumber == number) {
        return true;
    }
    m_objectsNumber = 0;
    const Entry entry = entryOf(number);
    const auto stream = entry.kind == inFile ? streamAt(entry.where) : std::nullopt;
    if (!stream || stream->number != number || !stream->entries.starts_with("/Type/ObjStm/N ")) {
        return false;
    }
    m_objects.resize(maxObjectStreamSize);
    std::ptrdiff_t size = -1;
    if (stream->entries.find(compressed) != std::string_view::npos) {
        size = m_inflater.expand(stream->data, m_objects.data(), m_objects.size());
    } else if (stream->data.size() <= m_objects.size()) {
        size = static_cast<std::ptrdiff_t>(stream->data.copy(m_objects.data(), stream->data.size()));
    }
    const auto first = numberBehind(stream->entries, "/First ");
    if (size < 0 || !first || *first > static_cast<std::uint64_t>(size)) {
        return false;
    }
    m_objectsHead = std::string_view(m_objects).substr(0, *first);
    m_objectsBody = std::string_view(m_objects).substr(*first, static_cast<std::size_t>(size) - *first);
    m_objectsNumber = number;
    return true;
}

std::string_view CopyVerifier::objectInStream(std::uint64_t number, std::uint64_t index) const
{
    Cursor cursor(m_objectsHead);
    for (std::uint64_t place = 0; place <= index; ++place) {
        const auto found = cursor.number();
        const auto start = cursor.take(" ") ? cursor.number() : std::nullopt;
        if (!found || !start || !cursor.take(" ")) {
            return {};
        }
        if (place == index) {
            (void)cursor.number();
            const auto next = cursor.take(" ") ? cursor.number() : m_objectsBody.size();
            const bool isThere = *found == number && next && *start < *next && *next <= m_objectsBody.size();
            return isThere ? m_objectsBody.substr(*start, *next - *start) : std::string_view();
        }
    }
    return {};
}

std::string_view CopyVerifier::object(std::uint64_t number)
{
    const Entry entry = entryOf(number);
    if (entry.kind == inObjectStream) {
        const std::string_view found =
            unpackObjects(entry.where) ? objectInStream(number, entry.index) : std::string_view();
        const bool isWhole =
            found.ends_with('\n') && found.substr(0, found.size() - 1).ends_with(dictionaryEnd);
        return isWhole ? found : std::string_view();
    }
    if (entry.kind != inFile) {
        return {};
    }
    Cursor cursor(headAt(entry.where));
    return cursor.number() == number && cursor.take(objectStart) ? cursor.rest() : std::string_view();
}

bool CopyVerifier::hasLastPage(std::uint64_t topNode, std::uint64_t pages)
{
    std::uint64_t parent = 0;
    std::uint64_t number = topNode;
    std::optional<Node> node = nodeIn(object(number));
    if (!node || node->pages != pages) {
        return false;
    }
    for (int depth = 0; depth < maxTreeDepth; ++depth) {
        if (node->parent != parent) {
            return false;
        }
        const std::string_view last = object(node->lastKid);
        Cursor page(last);
        if (page.take(dictionaryStart) && page.take("/Type/Page/Parent ")) {
            return page.reference() == number && page.take("/MediaBox[") && node->pages == node->kids;
        }
        parent = number;
        number = node->lastKid;
        node = nodeIn(last);
        if (!node) {
            return false;
        }
    }
    return false;
}

} // namespace tallyfold::pdf
