#include "pdf/ObjectCopier.h"

#include "pdf/FileInput.h"
#include "pdf/NumberFormat.h"
#include "pdf/RawStream.h"
#include "pdf/Syntax.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace tallyfold::pdf {

namespace {

/// Larger stream data is not held in memory on its way.
constexpr std::size_t largestHeldStream = 4 * 1024 * 1024;

/// What a stream's dictionary says beyond what is seen: authors' notes, structure, files outside.
constexpr std::array<std::string_view, 13> unseenStreamEntries{
    "/Metadata", "/PieceInfo", "/LastModified", "/StructParent", "/StructParents",
    "/AF",       "/OPI",       "/Ref",          "/Length",       "/Alternates",
    "/F",        "/FFilter",   "/FDecodeParms"};

constexpr std::array<std::string_view, 2> encodingEntries{"/Filter", "/DecodeParms"};

/// Objects that lead out of what a page shows, by their `/Type`.
constexpr std::array<std::string_view, 16> unseenTypes{
    "/Page",   "/Pages",    "/Catalog", "/Annot",        "/StructElem", "/StructTreeRoot",
    "/Action", "/Filespec", "/F",       "/EmbeddedFile", "/Metadata",   "/Outlines",
    "/Sig",    "/Names",    "/Bead",    "/Thread"};

template <typename List> bool contains(const List &list, std::string_view item)
{
    return std::find(list.begin(), list.end(), item) != list.end();
}

bool isUnseen(QPDFObjectHandle dictionary)
{
    QPDFObjectHandle type = dictionary.getKey("/Type");
    if (type.isName()) {
        return contains(unseenTypes, type.getName());
    }
    // A node of the page tree is one even when it does not say so.
    return dictionary.hasKey("/Parent") && (dictionary.hasKey("/MediaBox") || dictionary.hasKey("/Kids"));
}

std::uint64_t keyOf(const QPDFObjGen &id)
{
    return (static_cast<std::uint64_t>(id.getObj()) << 32U) | static_cast<std::uint32_t>(id.getGen());
}

/// `filter` is the crypt filter, which the parser has already undone.
bool isCryptFilter(QPDFObjectHandle filter)
{
    return filter.isName() && filter.getName() == "/Crypt";
}

} // namespace

ObjectCopier::ObjectCopier(Document &source, StreamingOutput &output) : m_source(&source), m_output(&output)
{
}

int ObjectCopier::numberFor(const QPDFObjectHandle &reference, Kind kind)
{
    const auto [place, isNew] = m_numbers.try_emplace(keyOf(reference.getObjGen()), 0);
    if (isNew) {
        place->second = m_output->reserve();
        m_pending.push_back({reference, place->second, kind});
    }
    return place->second;
}

std::optional<int> ObjectCopier::copiedNumber(const QPDFObjectHandle &reference) const
{
    const auto place = m_numbers.find(keyOf(reference.getObjGen()));
    return place == m_numbers.end() ? std::nullopt : std::optional(place->second);
}

int ObjectCopier::copyResources(const QPDFObjectHandle &reference)
{
    return numberFor(reference, Kind::resources);
}

int ObjectCopier::copyForm(const QPDFObjectHandle &reference)
{
    return numberFor(reference, Kind::form);
}

void ObjectCopier::append(std::string &out, const QPDFObjectHandle &value)
{
    if (!value.isIndirect()) {
        appendDirect(out, value);
        return;
    }
    if (!m_numbers.contains(keyOf(value.getObjGen()))) {
        QPDFObjectHandle target = m_source->fetch(value);
        QPDFObjectHandle dictionary = target.isStream() ? target.getDict() : target;
        if (target.isNull() || (dictionary.isDictionary() && isUnseen(dictionary))) {
            out.append("null");
            return;
        }
    }
    appendReference(out, numberFor(value, Kind::value));
}

void ObjectCopier::appendDirect(std::string &out, QPDFObjectHandle value)
{
    switch (value.getTypeCode()) {
    case ::ot_array:
        out.push_back('[');
        for (int index = 0, count = value.getArrayNItems(); index < count; ++index) {
            if (index > 0) {
                out.push_back(' ');
            }
            append(out, value.getArrayItem(index));
        }
        out.push_back(']');
        return;
    case ::ot_dictionary:
        if (isUnseen(value)) {
            out.append("null");
            return;
        }
        out.append("<<");
        for (const auto &[key, item] : value.getDictAsMap()) {
            appendName(out, key);
            out.push_back(' ');
            append(out, item);
        }
        out.append(">>");
        return;
    case ::ot_stream: // A stream is always indirect; one that is not has no data to copy.
    case ::ot_uninitialized:
    case ::ot_reserved:
    case ::ot_null:
        out.append("null");
        return;
    default:
        out.append(value.unparse());
        return;
    }
}

void ObjectCopier::appendResources(std::string &out, const QPDFObjectHandle &resources)
{
    QPDFObjectHandle categories = resources;
    if (!categories.isDictionary()) {
        out.append("<<>>");
        return;
    }
    out.append("<<");
    for (const auto &[category, names] : categories.getDictAsMap()) {
        QPDFObjectHandle entries = m_source->fetch(names);
        if (!entries.isDictionary()) {
            if (entries.isArray()) { // /ProcSet, the one category without names.
                appendName(out, category);
                append(out, names);
            }
            continue;
        }
        appendName(out, category);
        out.append("<<");
        for (const auto &[name, item] : entries.getDictAsMap()) {
            appendName(out, name);
            out.push_back(' ');
            append(out, item);
        }
        out.append(">>");
    }
    out.append(">>");
}

void ObjectCopier::appendStreamEntries(std::string &out, const QPDFObjectHandle &stream, StreamEntries which)
{
    QPDFObjectHandle dictionary = QPDFObjectHandle(stream).getDict();
    QPDFObjectHandle filter = dictionary.getKey("/Filter");
    const bool onlyCrypt = isCryptFilter(filter);
    const bool leadsWithCrypt =
        filter.isArray() && filter.getArrayNItems() > 0 && isCryptFilter(filter.getArrayItem(0));
    for (const auto &[key, value] : dictionary.getDictAsMap()) {
        const bool isEncoding = contains(encodingEntries, key);
        if (contains(unseenStreamEntries, key) || (which == StreamEntries::encodingOnly && !isEncoding) ||
            (isEncoding && onlyCrypt)) {
            continue;
        }
        appendName(out, key);
        if (isEncoding && leadsWithCrypt) {
            appendWithoutFirst(out, value);
        } else if (key == "/Resources") {
            appendResourcesEntry(out, value);
        } else {
            out.push_back(' ');
            append(out, value);
        }
    }
}

void ObjectCopier::appendResourcesEntry(std::string &out, const QPDFObjectHandle &value)
{
    if (QPDFObjectHandle(value).isIndirect()) {
        appendReference(out, copyResources(value));
    } else {
        appendResources(out, value);
    }
}

void ObjectCopier::appendReference(std::string &out, int number)
{
    out.push_back(' ');
    appendInteger(out, number);
    out.append(" 0 R");
}

void ObjectCopier::appendWithoutFirst(std::string &out, const QPDFObjectHandle &array)
{
    QPDFObjectHandle items = array;
    out.push_back('[');
    for (int index = 1, count = items.isArray() ? items.getArrayNItems() : 0; index < count; ++index) {
        out.push_back(' ');
        append(out, items.getArrayItem(index));
    }
    out.push_back(']');
}

std::optional<Document::Place> ObjectCopier::largeDataInFile(const QPDFObjectHandle &stream) const
{
    QPDFObjectHandle length = QPDFObjectHandle(stream).getDict().getKey("/Length");
    // Small data is in the parser's blocks already.
    constexpr long long leastSize = 16 * 1024;
    return length.isInteger() && length.getIntValue() >= leastSize ? m_source->dataInFile(stream)
                                                                   : std::nullopt;
}

void ObjectCopier::copyFromFile(int number, std::string_view entries, const Document::Place &place)
{
    constexpr std::uint64_t pieceSize = 128 * 1024;
    const FileInput &file = m_source->input();
    m_output->beginStream(number, entries, place.length);
    std::uint64_t done = m_output->copyToStream(file.descriptor(), place.offset, place.length);
    while (done < place.length && !m_output->hasFailed()) {
        m_data.resize(std::min(place.length - done, pieceSize));
        const std::size_t got =
            file.readAt(place.offset + static_cast<std::int64_t>(done), m_data.data(), m_data.size());
        if (got == 0) {
            throw std::system_error(EIO, std::generic_category(), "the file has become shorter");
        }
        m_output->appendToStream(std::string_view(m_data).substr(0, got));
        done += got;
    }
    m_output->endStream();
}

void ObjectCopier::writeStreamData(int number, std::string_view entries, const QPDFObjectHandle &stream)
{
    if (const auto place = largeDataInFile(stream)) {
        copyFromFile(number, entries, *place);
        return;
    }
    m_data.clear();
    bool isBegun = false;
    RawStream pipe([&](std::string_view bytes) {
        if (!isBegun && m_data.size() + bytes.size() > largestHeldStream) {
            m_output->beginStream(number, entries);
            m_output->appendToStream(m_data);
            isBegun = true;
        }
        if (isBegun) {
            m_output->appendToStream(bytes);
        } else {
            m_data.append(bytes);
        }
    });
    QPDFObjectHandle(stream).pipeStreamData(&pipe, 0, qpdf_dl_none, true, false);
    if (isBegun) {
        m_output->endStream();
    } else {
        m_output->writeEncodedStream(number, entries, m_data);
    }
}

void ObjectCopier::write(const Pending &pending)
{
    QPDFObjectHandle object = m_source->fetch(pending.object);
    m_syntax.clear();
    if (object.isStream()) {
        std::string entries;
        appendStreamEntries(entries, object, StreamEntries::all);
        if (pending.kind == Kind::form && !object.getDict().getKey("/Subtype").isName()) {
            entries.append("/Subtype/Form");
        }
        writeStreamData(pending.number, entries, object);
        if (object.getDict().getKey("/Subtype").isNameAndEquals("/Image")) {
            m_source->release(pending.object); // Reached by copying alone, so never looked at again.
        }
        return;
    }
    if (pending.kind == Kind::resources) {
        appendResources(m_syntax, object);
    } else {
        appendDirect(m_syntax, object);
    }
    m_output->writeObject(pending.number, m_syntax);
}

void ObjectCopier::drain()
{
    while (!m_pending.empty()) {
        const Pending pending = m_pending.front();
        m_pending.pop_front();
        write(pending);
    }
}

} // namespace tallyfold::pdf
