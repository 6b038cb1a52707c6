#pragma once

#include "pdf/source/Document.h"
#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/StreamingOutput.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tallyfold::pdf {

/// Copies objects of a source into an output, each once, with all objects they refer to that can be visible
/// on a page. The data of streams is copied encoded. References into the page tree and the logical
/// structure, to page-piece data, metadata, embedded files and actions become null.
class ObjectCopier {
public:
    ObjectCopier(Document &source, StreamingOutput &output);

    /// Appends `value` in PDF syntax with references to the output. The objects behind them are copied by
    /// the next `drain`.
    void append(std::string &out, const QPDFObjectHandle &value);

    /// As `append`, for a resource dictionary (PDF 1.7, 7.8.3), whose names are arbitrary. Objects in it
    /// that have no resources of their own are given these.
    void appendResources(std::string &out, const QPDFObjectHandle &resources);
    /// As `appendResources`, without the brackets.
    void appendResourceEntries(std::string &out, const QPDFObjectHandle &resources);

    /// The object number in the output of the resource dictionary behind `reference`.
    [[nodiscard]] int copyResources(const QPDFObjectHandle &reference);

    /// The object number in the output of the stream behind `reference`, as a form XObject: appearance
    /// streams often lack the entries of one. Without resources of its own it is given `resources`.
    [[nodiscard]] int copyForm(const QPDFObjectHandle &reference, const QPDFObjectHandle &resources);

    /// The object number in the output of the object behind `reference`; nothing when no copied object
    /// refers to it.
    [[nodiscard]] std::optional<int> copiedNumber(const QPDFObjectHandle &reference) const;

    /// Appends the entries of a stream's dictionary without `/Length`: all that are copied, or only those of
    /// its encoding. `asForm` is for an appearance stream that becomes a form, `paintedPlainly` for a form
    /// that is painted without opacity, mask or blend mode.
    enum class StreamEntries { all, asForm, paintedPlainly, encodingOnly };
    void appendStreamEntries(std::string &out, const QPDFObjectHandle &stream, StreamEntries which);

    /// Writes the encoded data of `stream` as the stream `number` with the entries `entries`.
    void writeStreamData(int number, std::string_view entries, const QPDFObjectHandle &stream);

    /// Writes all objects that are referred to and not written yet.
    void drain();

private:
    /// What an object becomes in the output: the same value, a resource dictionary, the form of an
    /// annotation, a form within that.
    enum class Kind : std::uint8_t { value, resources, form, plainForm };
    struct Pending {
        QPDFObjectHandle object;
        int number = 0;
        Kind kind = Kind::value;
        QPDFObjectHandle lender;  ///< The resources through which it was reached.
        bool isBorrowing = false; ///< Whether it gets them.
    };

    [[nodiscard]] static std::uint64_t keyOf(const QPDFObjectHandle &reference, Kind kind);
    int numberFor(const QPDFObjectHandle &reference, Kind kind);
    int borrowerFor(const QPDFObjectHandle &reference, Kind kind);
    int copyLender();
    [[nodiscard]] bool isBorrower(const QPDFObjectHandle &reference, Kind kind) const;
    void appendDirect(std::string &out, QPDFObjectHandle value);
    void appendDictionary(std::string &out, QPDFObjectHandle dictionary, bool isBorrowing);
    void writeBorrowedResources(EntryWriter &entries);
    void appendResourcesEntry(std::string &out, const QPDFObjectHandle &value);
    void appendPaintedPlainly(std::string &out, const QPDFObjectHandle &object);
    /// The items from the one with the index `first` on; nothing of what is no array.
    void appendArray(std::string &out, QPDFObjectHandle array, int first);
    [[nodiscard]] std::optional<Document::Place> largeDataInFile(const QPDFObjectHandle &stream) const;
    void copyFromFile(int number, std::string_view entries, const Document::Place &place);
    void write(const Pending &pending);

    Document *m_source;
    StreamingOutput *m_output;
    std::unordered_map<std::uint64_t, int> m_numbers;
    /// Object numbers of objects that are given resources, by the number of the resources.
    std::unordered_map<std::uint64_t, std::unordered_map<int, int>> m_borrowers;
    /// Object numbers of direct resources, by their syntax.
    std::unordered_map<std::string, int> m_directLenders;
    QPDFObjectHandle m_lender;    ///< The resources of the current object, or through which it was reached.
    bool m_paintsPlainly = false; ///< Whether the current object paints without opacity, mask or blend mode.
    std::deque<Pending> m_pending;
    std::string m_syntax;
    std::string m_data;
};

} // namespace tallyfold::pdf
