#include "pdf/copy/ObjectCopier.h"

#include "pdf/annotations/AppearanceForm.h"
#include "pdf/copy/ResourceUse.h"
#include "pdf/source/FailureLog.h"
#include "pdf/source/FileInput.h"
#include "pdf/source/RawStream.h"
#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Syntax.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace tallyfold::pdf {

namespace {

/// Larger stream data is copied in parts.
constexpr std::size_t maxHeldStreamSize = 4 * 1024 * 1024;

/// Entries of stream dictionaries with no effect on what is visible: private data, structure, external
/// files.
constexpr std::array<std::string_view, 13> unseenStreamEntries{
    "/Metadata", "/PieceInfo", "/LastModified", "/StructParent", "/StructParents",
    "/AF",       "/OPI",       "/Ref",          "/Length",       "/Alternates",
    "/F",        "/FFilter",   "/FDecodeParms"};

constexpr std::array<std::string_view, 2> encodingEntries{"/Filter", "/DecodeParms"};

/// Types of objects that are not visible on a page.
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
    // Nodes of the page tree may lack their `/Type`.
    return dictionary.hasKey("/Parent") && (dictionary.hasKey("/MediaBox") || dictionary.hasKey("/Kids"));
}

/// Whether `filter` is the crypt filter, which the parser has applied already.
bool isCryptFilter(QPDFObjectHandle filter)
{
    return filter.isName() && filter.getName() == "/Crypt";
}

} // namespace

ObjectCopier::ObjectCopier(Document &source, StreamingOutput &output)
    : m_source(&source), m_output(&output), m_lender(QPDFObjectHandle::newNull())
{
}

std::uint64_t ObjectCopier::keyOf(const QPDFObjectHandle &reference, Kind kind)
{
    // Appearances, forms within them and other objects have different entries (`entriesAsForm`). Object and
    // generation numbers do not reach these bits.
    constexpr std::uint64_t formBit = 1ULL << 63U;
    constexpr std::uint64_t plainFormBit = 1ULL << 31U;
    const QPDFObjGen id = reference.getObjGen();
    return (static_cast<std::uint64_t>(id.getObj()) << 32U) | static_cast<std::uint32_t>(id.getGen()) |
           (kind == Kind::form ? formBit : 0) | (kind == Kind::plainForm ? plainFormBit : 0);
}

int ObjectCopier::numberFor(const QPDFObjectHandle &reference, Kind kind)
{
    const auto [place, isNew] = m_numbers.try_emplace(keyOf(reference, kind), 0);
    if (isNew) {
        place->second = m_output->reserve();
        m_pending.push_back({reference, place->second, kind, m_lender});
    }
    return place->second;
}

bool ObjectCopier::isBorrower(const QPDFObjectHandle &reference, Kind kind) const
{
    return m_borrowers.contains(keyOf(reference, kind));
}

int ObjectCopier::borrowerFor(const QPDFObjectHandle &reference, Kind kind)
{
    int &number = m_borrowers[keyOf(reference, kind)][copyLender()];
    if (number == 0) {
        number = m_output->reserve();
        m_pending.push_back({reference, number, kind, m_lender, true});
    }
    return number;
}

int ObjectCopier::copyLender()
{
    if (!m_lender.isDictionary()) {
        return 0;
    }
    if (m_lender.isIndirect()) {
        return copyResources(m_lender);
    }
    int &number = m_directLenders[m_lender.unparse()];
    if (number == 0) {
        number = m_output->reserve();
        m_pending.push_back({m_lender, number, Kind::resources, m_lender});
    }
    return number;
}

std::optional<int> ObjectCopier::copiedNumber(const QPDFObjectHandle &reference) const
{
    const auto place = m_numbers.find(keyOf(reference, Kind::value));
    return place == m_numbers.end() ? std::nullopt : std::optional(place->second);
}

int ObjectCopier::copyResources(const QPDFObjectHandle &reference)
{
    return numberFor(reference, Kind::resources);
}

int ObjectCopier::copyForm(const QPDFObjectHandle &reference, const QPDFObjectHandle &resources)
{
    const QPDFObjectHandle previous = std::exchange(m_lender, resources);
    const bool borrows =
        isBorrower(reference, Kind::form) || borrowsResources(m_source->fetch(reference), true);
    const int number = borrows ? borrowerFor(reference, Kind::form) : numberFor(reference, Kind::form);
    m_lender = previous;
    return number;
}

void ObjectCopier::append(std::string &out, const QPDFObjectHandle &value)
{
    if (!value.isIndirect()) {
        appendDirect(out, value);
        return;
    }
    if (!m_numbers.contains(keyOf(value, Kind::value)) && !isBorrower(value, Kind::value)) {
        QPDFObjectHandle target = m_source->fetch(value);
        QPDFObjectHandle dictionary = target.isStream() ? target.getDict() : target;
        if (target.isNull() || (dictionary.isDictionary() && isUnseen(dictionary))) {
            out.append("null");
            return;
        }
        if (borrowsResources(target, false)) {
            m_borrowers[keyOf(value, Kind::value)];
        }
    }
    appendReference(out, isBorrower(value, Kind::value) ? borrowerFor(value, Kind::value)
                                                        : numberFor(value, Kind::value));
}

void ObjectCopier::appendDirect(std::string &out, QPDFObjectHandle value)
{
    switch (value.getTypeCode()) {
    case ::ot_array:
        appendArray(out, value, 0);
        return;
    case ::ot_dictionary:
        if (isUnseen(value)) {
            out.append("null");
            return;
        }
        appendDictionary(out, value, !value.isIndirect() && borrowsResources(value, false));
        return;
    case ::ot_stream: // Streams are indirect; a direct one has no data.
    case ::ot_uninitialized:
    case ::ot_reserved:
    case ::ot_null:
        out.append("null");
        return;
    default:
        out.append(value.unparseResolved());
        return;
    }
}

void ObjectCopier::appendDictionary(std::string &out, QPDFObjectHandle dictionary, bool isBorrowing)
{
    const bool isFont = dictionary.getKey("/Subtype").isNameAndEquals("/Type3");
    DictionaryWriter entries(out);
    for (const auto &[key, item] : dictionary.getDictAsMap()) {
        if (isBorrowing && key == "/Resources") {
            continue;
        }
        appendName(out, key);
        if (isFont && key == "/Resources") {
            appendResourcesEntry(out, item);
            continue;
        }
        out.push_back(' ');
        append(out, item);
    }
    if (isBorrowing) {
        writeBorrowedResources(entries);
    }
}

void ObjectCopier::writeBorrowedResources(EntryWriter &entries)
{
    if (const int number = copyLender(); number != 0) {
        entries.reference("/Resources", number);
    }
}

void ObjectCopier::appendResources(std::string &out, const QPDFObjectHandle &resources)
{
    const DictionaryWriter entries(out);
    appendResourceEntries(out, resources);
}

void ObjectCopier::appendResourceEntries(std::string &out, const QPDFObjectHandle &resources)
{
    const bool paintsPlainly = std::exchange(m_paintsPlainly, false); // Of this level alone.
    QPDFObjectHandle categories = m_source->fetch(resources);
    if (!categories.isDictionary()) {
        return;
    }
    const QPDFObjectHandle previous = std::exchange(m_lender, resources);
    for (const auto &[category, names] : categories.getDictAsMap()) {
        QPDFObjectHandle entries = m_source->fetch(names);
        if (!entries.isDictionary()) {
            if (entries.isArray()) { // `/ProcSet`, the only category without names.
                appendName(out, category);
                out.push_back(' ');
                append(out, names);
            }
            continue;
        }
        appendName(out, category);
        const DictionaryWriter written(out);
        for (const auto &[name, item] : entries.getDictAsMap()) {
            appendName(out, name);
            out.push_back(' ');
            if (paintsPlainly && category == "/XObject") {
                appendPaintedPlainly(out, item);
            } else {
                append(out, item);
            }
        }
    }
    m_lender = previous;
}

void ObjectCopier::appendPaintedPlainly(std::string &out, const QPDFObjectHandle &object)
{
    QPDFObjectHandle target = m_source->fetch(object);
    const bool isForm = target.isStream() && target.getDict().getKey("/Subtype").isNameAndEquals("/Form");
    if (isForm && !borrowsResources(target, false) && !isUnseen(target.getDict())) {
        appendReference(out, numberFor(object, Kind::plainForm));
    } else {
        append(out, object);
    }
}

void ObjectCopier::appendStreamEntries(std::string &out, const QPDFObjectHandle &stream, StreamEntries which)
{
    QPDFObjectHandle dictionary = which == StreamEntries::asForm ? entriesAsForm(stream)
                                  : which == StreamEntries::paintedPlainly
                                      ? entriesPaintedPlainly(stream)
                                      : QPDFObjectHandle(stream).getDict();
    QPDFObjectHandle filter = dictionary.getKey("/Filter");
    const bool onlyCrypt = isCryptFilter(filter);
    const bool leadsWithCrypt =
        filter.isArray() && filter.getArrayNItems() > 0 && isCryptFilter(filter.getArrayItem(0));
    for (const auto &[key, value] : dictionary.getDictAsMap()) {
        const bool isEncoding = contains(encodingEntries, key);
        const bool isNoResources = key == "/Resources" && !QPDFObjectHandle(value).isDictionary();
        if (contains(unseenStreamEntries, key) || isNoResources ||
            (which == StreamEntries::encodingOnly && !isEncoding) || (isEncoding && onlyCrypt)) {
            continue;
        }
        appendName(out, key);
        if (isEncoding && leadsWithCrypt) {
            appendArray(out, value, 1);
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
    if (QPDFObjectHandle(value).isIndirect() && !m_paintsPlainly) {
        out.push_back(' ');
        appendReference(out, copyResources(value));
    } else {
        appendResources(out, value);
    }
}

void ObjectCopier::appendArray(std::string &out, QPDFObjectHandle array, int first)
{
    ArrayWriter items(out);
    for (int index = first, count = array.isArray() ? array.getArrayNItems() : 0; index < count; ++index) {
        items.item();
        append(out, array.getArrayItem(index));
    }
}

std::optional<Document::Place> ObjectCopier::largeDataInFile(const QPDFObjectHandle &stream) const
{
    QPDFObjectHandle length = QPDFObjectHandle(stream).getDict().getKey("/Length");
    // Small data is in the parser's cache already.
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
        if (!isBegun && m_data.size() + bytes.size() > maxHeldStreamSize) {
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
    bool isDecoded = false;
    if (!QPDFObjectHandle(stream).pipeStreamData(&pipe, &isDecoded, 0, qpdf_dl_none, true, false)) {
        logDamagedStream(stream);
    }
    if (isBegun) {
        m_output->endStream();
    } else {
        m_output->writeEncodedStream(number, entries, m_data);
    }
}

void ObjectCopier::write(const Pending &pending)
{
    QPDFObjectHandle object = m_source->fetch(pending.object);
    m_lender = pending.lender;
    m_syntax.clear();
    if (object.isStream()) {
        std::string entries;
        m_paintsPlainly =
            (pending.kind == Kind::form || pending.kind == Kind::plainForm) && paintsPlainly(object);
        appendStreamEntries(entries, object,
                            pending.kind == Kind::form        ? StreamEntries::asForm
                            : pending.kind == Kind::plainForm ? StreamEntries::paintedPlainly
                                                              : StreamEntries::all);
        m_paintsPlainly = false;
        if (pending.isBorrowing) {
            EntryWriter written(entries);
            writeBorrowedResources(written);
        }
        writeStreamData(pending.number, entries, object);
        if (object.getDict().getKey("/Subtype").isNameAndEquals("/Image")) {
            m_source->release(pending.object); // Reached only by copying, so not needed again.
        }
        return;
    }
    if (pending.kind == Kind::resources) {
        appendResources(m_syntax, object);
    } else if (pending.isBorrowing) {
        appendDictionary(m_syntax, object, true);
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
