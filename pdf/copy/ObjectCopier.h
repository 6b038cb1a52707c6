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

/// Copies objects of a source into an output, each once, with all they refer to that can be seen on a page.
/// Data of streams is copied as it is, still compressed. What is not followed: links into the page tree and
/// the logical structure, page-piece data, metadata, embedded files, actions; such a reference becomes null.
class ObjectCopier {
public:
    ObjectCopier(Document &source, StreamingOutput &output);

    /// Appends `value` in PDF syntax, every reference in it turned into one of the output.
    /// What is referred to is copied by the next `drain`.
    void append(std::string &out, const QPDFObjectHandle &value);

    /// As `append`, for a resource dictionary (PDF 1.7, 7.8.3): the names in it are the author's own,
    /// and none of them means anything by itself. What it leads to and has no resources of its own is given
    /// these.
    void appendResources(std::string &out, const QPDFObjectHandle &resources);
    /// The same without the brackets.
    void appendResourceEntries(std::string &out, const QPDFObjectHandle &resources);

    /// The output's number for the resource dictionary behind `reference`.
    [[nodiscard]] int copyResources(const QPDFObjectHandle &reference);

    /// The output's number for the stream behind `reference`, which is drawn as a form XObject and becomes
    /// one even where it does not say so: appearance streams often do not. Without resources of its own it
    /// is given `resources`.
    [[nodiscard]] int copyForm(const QPDFObjectHandle &reference, const QPDFObjectHandle &resources);

    /// The output's number for the object behind `reference`, when anything copied refers to it.
    [[nodiscard]] std::optional<int> copiedNumber(const QPDFObjectHandle &reference) const;

    /// The dictionary entries of a stream that describe its encoding and, unless `encodingOnly`, everything
    /// else worth keeping; without `/Length`. `asForm` is all of an appearance stream that becomes a form,
    /// `paintedPlainly` of a form that is painted so.
    enum class StreamEntries { all, asForm, paintedPlainly, encodingOnly };
    void appendStreamEntries(std::string &out, const QPDFObjectHandle &stream, StreamEntries which);

    /// Writes the raw data of `stream` as the stream `number`, whose dictionary is `entries`.
    void writeStreamData(int number, std::string_view entries, const QPDFObjectHandle &stream);

    /// Writes everything that was referred to and is not written yet.
    void drain();

private:
    /// What an object is copied as: as it is, as a resource dictionary, as the form that an annotation shows,
    /// as one within that.
    enum class Kind : std::uint8_t { value, resources, form, plainForm };
    struct Pending {
        QPDFObjectHandle object;
        int number = 0;
        Kind kind = Kind::value;
        QPDFObjectHandle lender;  ///< The resources that led to it.
        bool isBorrowing = false; ///< Whether it is given them.
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
    void appendWithoutFirst(std::string &out, const QPDFObjectHandle &array);
    [[nodiscard]] std::optional<Document::Place> largeDataInFile(const QPDFObjectHandle &stream) const;
    void copyFromFile(int number, std::string_view entries, const Document::Place &place);
    void write(const Pending &pending);

    Document *m_source;
    StreamingOutput *m_output;
    std::unordered_map<std::uint64_t, int> m_numbers;
    /// Objects that are given resources: for each, its numbers by that of the resources.
    std::unordered_map<std::uint64_t, std::unordered_map<int, int>> m_borrowers;
    std::unordered_map<std::string, int>
        m_directLenders;          ///< Numbers of resources, by their syntax in the source.
    QPDFObjectHandle m_lender;    ///< The resources of what is being written, or of what led to it.
    bool m_paintsPlainly = false; ///< Whether what is being written paints everything plainly.
    std::deque<Pending> m_pending;
    std::string m_syntax;
    std::string m_data;
};

} // namespace tallyfold::pdf
