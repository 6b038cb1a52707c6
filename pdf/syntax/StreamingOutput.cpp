#include "pdf/syntax/StreamingOutput.h"

#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Spelling.h"
#include "pdf/syntax/Syntax.h"

#include <QCryptographicHash>

namespace tallyfold::pdf {

namespace {

/// Large enough to compress well, small enough that a viewer decompresses little for one object.
constexpr std::size_t objectsInAStream = 200;
constexpr std::size_t bytesInAnObjectStream = 64 * 1024;

/// A larger object is written by itself.
constexpr std::size_t largeObject = 32 * 1024;

/// Smaller streams are not compressed: they would hardly get smaller, and building the codes takes longer
/// than all else that is done for a page.
constexpr std::size_t leastCompressed = 256;

/// The same for object streams, of which a small file has one: it saves half a kilobyte and takes a tenth of
/// the time of the whole file.
constexpr std::size_t leastCompressedObjects = 2048;

void appendBigEndian(std::string &out, std::uint64_t value, unsigned bytes)
{
    for (unsigned byte = bytes; byte > 0; --byte) {
        out.push_back(static_cast<char>((value >> ((byte - 1) * 8)) & 0xffU));
    }
}

} // namespace

StreamingOutput::StreamingOutput(files::ByteSink &sink) : m_sink(&sink)
{
    m_entries.emplace_back();
    put(spelling::fileStart);
    // Marks the file as binary (PDF 1.7, 7.5.2).
    put("%\xE2\xE3\xCF\xD3\n");
}

int StreamingOutput::reserve()
{
    m_entries.emplace_back();
    return static_cast<int>(m_entries.size()) - 1;
}

void StreamingOutput::put(std::string_view bytes)
{
    m_offset += bytes.size();
    if (!m_hasFailed && !m_sink->write(bytes)) {
        m_hasFailed = true;
    }
}

void StreamingOutput::beginObject(int number)
{
    m_entries[static_cast<std::size_t>(number)] = {m_offset, 0, Kind::inFile};
}

void StreamingOutput::writeObject(int number, std::string_view syntax)
{
    if (syntax.size() > largeObject) {
        beginObject(number);
        m_scratch.clear();
        appendInteger(m_scratch, number);
        m_scratch.append(spelling::objectStart).append(syntax).append(spelling::objectEnd);
        put(m_scratch);
        return;
    }
    m_gathered.emplace_back(number, m_gatheredSyntax.size());
    m_gatheredSyntax.append(syntax).push_back('\n');
    if (m_gathered.size() >= objectsInAStream || m_gatheredSyntax.size() >= bytesInAnObjectStream) {
        flushObjectStream();
    }
}

void StreamingOutput::flushObjectStream()
{
    if (m_gathered.empty()) {
        return;
    }
    const int streamNumber = reserve();
    std::string head;
    std::uint32_t index = 0;
    for (const auto &[number, start] : m_gathered) {
        appendInteger(head, number);
        head.push_back(' ');
        appendInteger(head, static_cast<std::int64_t>(start));
        head.push_back(' ');
        m_entries[static_cast<std::size_t>(number)] = {static_cast<std::uint64_t>(streamNumber), index++,
                                                       Kind::inObjectStream};
    }
    std::string syntax;
    EntryWriter entries(syntax);
    entries.name("/Type", "/ObjStm");
    entries.integer("/N", static_cast<std::int64_t>(m_gathered.size()));
    entries.integer("/First", static_cast<std::int64_t>(head.size()));
    head.append(m_gatheredSyntax);
    m_gathered.clear();
    m_gatheredSyntax.clear();
    if (head.size() < leastCompressedObjects) {
        writeEncodedStream(streamNumber, syntax, head);
    } else {
        writeStream(streamNumber, syntax, head);
    }
}

void StreamingOutput::writeStream(int number, std::string_view entries, std::string_view data)
{
    if (data.size() < leastCompressed) {
        writeEncodedStream(number, entries, data);
        return;
    }
    std::string compressedEntries(entries);
    compressedEntries.append(spelling::compressed);
    writeEncodedStream(number, compressedEntries, m_deflater.compress(data));
}

void StreamingOutput::putStreamHead(int number, std::string_view entries, std::string_view lengthSyntax)
{
    beginObject(number);
    m_scratch.clear();
    appendInteger(m_scratch, number);
    m_scratch.append(spelling::objectStart)
        .append(spelling::dictionaryStart)
        .append(entries)
        .append("/Length ")
        .append(lengthSyntax)
        .append(spelling::dataStart);
    put(m_scratch);
}

void StreamingOutput::writeEncodedStream(int number, std::string_view entries, std::string_view bytes)
{
    std::string length;
    appendInteger(length, static_cast<std::int64_t>(bytes.size()));
    putStreamHead(number, entries, length);
    put(bytes);
    put(spelling::dataEnd);
}

void StreamingOutput::beginStream(int number, std::string_view entries, std::optional<std::uint64_t> length)
{
    std::string syntax;
    if (length) {
        m_lengthObject = 0;
        appendInteger(syntax, static_cast<std::int64_t>(*length));
    } else {
        m_lengthObject = reserve();
        appendReference(syntax, m_lengthObject);
    }
    putStreamHead(number, entries, syntax);
    m_streamStart = m_offset;
}

void StreamingOutput::appendToStream(std::string_view bytes)
{
    put(bytes);
}

std::uint64_t StreamingOutput::copyToStream(int descriptor, std::int64_t offset, std::uint64_t length)
{
    const std::uint64_t copied = m_hasFailed ? 0 : m_sink->copyFrom(descriptor, offset, length);
    m_offset += copied;
    return copied;
}

void StreamingOutput::endStream()
{
    const std::uint64_t written = m_offset - m_streamStart;
    put(spelling::dataEnd);
    if (m_lengthObject != 0) {
        std::string length;
        appendInteger(length, static_cast<std::int64_t>(written));
        writeObject(m_lengthObject, length);
    }
}

std::string StreamingOutput::crossReferences() const
{
    std::string rows;
    rows.reserve(m_entries.size() * spelling::rowLength);
    for (std::size_t number = 0; number < m_entries.size(); ++number) {
        const Entry &entry = m_entries[number];
        const std::uint64_t freeGeneration = number == 0 ? 0xffffU : 0;
        appendBigEndian(rows, static_cast<std::uint64_t>(entry.kind), spelling::columns[0]);
        appendBigEndian(rows, entry.where, spelling::columns[1]);
        appendBigEndian(rows, entry.kind == Kind::free ? freeGeneration : entry.index, spelling::columns[2]);
    }
    return rows;
}

void StreamingOutput::finish(int catalog)
{
    flushObjectStream();
    const int number = reserve();
    beginObject(number);
    const std::uint64_t start = m_offset;
    const std::string rows = crossReferences();
    const QByteArray digest =
        QCryptographicHash::hash(QByteArrayView(rows.data(), static_cast<qsizetype>(rows.size())),
                                 QCryptographicHash::Md5)
            .toHex();
    std::string syntax;
    EntryWriter entries(syntax);
    entries.name("/Type", "/XRef");
    entries.syntax("/W", spelling::columnWidths);
    entries.integer("/Size", static_cast<std::int64_t>(m_entries.size()));
    entries.reference("/Root", catalog);
    entries.syntax("/ID", "[<");
    syntax.append(digest.constData()).append("><").append(digest.constData()).append(">]");
    if (rows.size() < leastCompressed) {
        writeEncodedStream(number, syntax, rows);
    } else {
        // Neighbouring rows differ little: the PNG "up" predictor makes them compress well
        // (PDF 1.7, 7.4.4.4).
        syntax.append(spelling::compressed);
        {
            DictionaryWriter parameters = entries.dictionary("/DecodeParms");
            parameters.integer("/Predictor", 12);
            parameters.integer("/Columns", spelling::rowLength);
        }
        writeEncodedStream(number, syntax, m_deflater.compress(withUpPredictor(rows, spelling::rowLength)));
    }
    std::string end(spelling::crossReferenceStart);
    appendInteger(end, static_cast<std::int64_t>(start));
    end.append(spelling::fileEnd);
    put(end);
    if (!m_hasFailed && !m_sink->finish()) {
        m_hasFailed = true;
    }
}

bool StreamingOutput::hasFailed() const
{
    return m_hasFailed;
}

} // namespace tallyfold::pdf
