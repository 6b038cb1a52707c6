#include "pdf/source/Document.h"

#include "pdf/source/FailureLog.h"
#include "pdf/source/FileInput.h"
#include "pdf/source/MemoryLimit.h"
#include "pdf/source/PageTree.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// A parser that prints nothing and repairs what it can.
std::shared_ptr<QPDF> parse(const std::shared_ptr<FileInput> &input)
{
    auto parser = QPDF::create();
    parser->setSuppressWarnings(true);
    input->rewind();
    parser->processInputSource(input, "");
    return parser;
}

ReadFailure failureOf(const FileInput &input)
{
    const bool isMemoryShort = MemoryLimit::wasReached();
    return {input.failure(), isMemoryShort || input.isExhausted(), isMemoryShort};
}

} // namespace

struct Document::Parts {
    MemoryLimit limit; ///< Must outlive what is allocated under it.
    std::shared_ptr<FileInput> input;
    std::shared_ptr<QPDF> parser;
    /// A second parser for objects that `parser` has released, made when first needed.
    std::shared_ptr<QPDF> secondParser;
    std::vector<bool> released;
    bool isEncrypted = false;
    bool hasOwnersRights = false;
};

Document::Opened Document::open(const std::filesystem::path &path)
{
    auto parts = std::make_unique<Parts>();
    std::error_code error;
    parts->input = FileInput::open(path, error);
    if (!parts->input) {
        return OpenFailure{OpenFailure::Kind::unreadable, {error, false, false}};
    }
    const auto unreadable = [&input = *parts->input] {
        return OpenFailure{OpenFailure::Kind::unreadable, failureOf(input)};
    };
    try {
        parts->parser = parse(parts->input);
        parts->isEncrypted = parts->parser->isEncrypted();
        parts->hasOwnersRights = parts->isEncrypted && parts->parser->ownerPasswordMatched();
        if (!parts->parser->getRoot().isDictionary() || failureOf(*parts->input)) {
            return unreadable();
        }
        return std::unique_ptr<Document>(new Document(std::move(parts)));
    } catch (const std::exception &failure) {
        const auto *parsing = dynamic_cast<const QPDFExc *>(&failure);
        if (parsing != nullptr && parsing->getErrorCode() == qpdf_e_password) {
            return OpenFailure{OpenFailure::Kind::locked, {}};
        }
        logFailure("opening a document", failure);
        return unreadable();
    }
}

Document::Document(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}

Document::~Document() = default;

bool Document::isRestricted() const
{
    return isEncrypted() && !(allowsPrinting() && allowsChanges() && allowsCopying());
}

bool Document::isEncrypted() const
{
    return m_parts->isEncrypted;
}

bool Document::allowsPrinting() const
{
    return m_parts->hasOwnersRights || m_parts->parser->allowPrintLowRes();
}

bool Document::allowsChanges() const
{
    return m_parts->hasOwnersRights || m_parts->parser->allowModifyOther();
}

bool Document::allowsCopying() const
{
    return m_parts->hasOwnersRights || m_parts->parser->allowExtractAll();
}

std::int64_t Document::pageCount()
{
    try {
        PageTree tree(*this);
        std::int64_t count = 0;
        while (const auto page = tree.next()) {
            ++count;
            release(page->dictionary);
        }
        return count;
    } catch (const std::exception &failure) {
        logFailure("counting pages", failure);
        return 0;
    }
}

bool Document::hasChanged() const
{
    return m_parts->input->hasChanged();
}

ReadFailure Document::readFailure() const
{
    return failureOf(*m_parts->input);
}

QPDF &Document::parsed()
{
    return *m_parts->parser;
}

void Document::release(const QPDFObjectHandle &reference)
{
    const QPDFObjGen id = reference.getObjGen();
    if (id.getObj() <= 0 || reference.getOwningQPDF() != m_parts->parser.get()) {
        return;
    }
    const auto number = static_cast<std::size_t>(id.getObj());
    if (m_parts->released.size() <= number) {
        m_parts->released.resize(std::max(number + 1, m_parts->released.size() * 2));
    }
    m_parts->released[number] = true;
    m_parts->parser->replaceObject(id, QPDFObjectHandle::newNull());
}

std::optional<Document::Place> Document::dataInFile(const QPDFObjectHandle &stream) const
{
    QPDFObjectHandle handle = stream;
    QPDFObjectHandle length = handle.getDict().getKey("/Length");
    const qpdf_offset_t start = handle.getParsedOffset();
    const long long size = length.isInteger() ? length.getIntValue() : 0;
    std::array<char, 8> before{}; // "stream" and the end of its line (PDF 1.7, 7.3.8.1).
    std::array<char, 11> after{}; // Perhaps an end of line, then "endstream".
    const FileInput &file = input();
    if (m_parts->isEncrypted || start < static_cast<qpdf_offset_t>(before.size()) || size < 1 ||
        size > file.size() - start) {
        return std::nullopt;
    }
    const auto read = [&file](qpdf_offset_t offset, auto &bytes) {
        return std::string_view(bytes.data(), file.readAt(offset, bytes.data(), bytes.size()));
    };
    std::string_view head = read(start - static_cast<qpdf_offset_t>(before.size()), before);
    std::string_view tail = read(start + size, after);
    while (!head.empty() && (head.back() == '\r' || head.back() == '\n')) {
        head.remove_suffix(1);
    }
    for (const char lineEnd : {'\r', '\n'}) {
        if (tail.starts_with(lineEnd)) {
            tail.remove_prefix(1);
        }
    }
    const bool isThere =
        head.size() < before.size() && head.ends_with("stream") && tail.starts_with("endstream");
    return isThere ? std::optional(Place{start, static_cast<std::uint64_t>(size)}) : std::nullopt;
}

const FileInput &Document::input() const
{
    return *m_parts->input;
}

QPDFObjectHandle Document::fetch(const QPDFObjectHandle &reference)
{
    const QPDFObjGen id = reference.getObjGen();
    const auto number = static_cast<std::size_t>(std::max(id.getObj(), 0));
    if (number >= m_parts->released.size() || !m_parts->released[number] ||
        reference.getOwningQPDF() != m_parts->parser.get()) {
        return reference;
    }
    if (!m_parts->secondParser) {
        m_parts->secondParser = parse(m_parts->input);
    }
    return m_parts->secondParser->getObject(id);
}

} // namespace tallyfold::pdf
