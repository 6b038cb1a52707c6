#pragma once

#include "pdf/Document.h"
#include "pdf/StreamingOutput.h"

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
    /// and none of them means anything by itself.
    void appendResources(std::string &out, const QPDFObjectHandle &resources);

    /// The output's number for the resource dictionary behind `reference`.
    [[nodiscard]] int copyResources(const QPDFObjectHandle &reference);

    /// The output's number for the stream behind `reference`, which is drawn as a form XObject and becomes
    /// one even where it does not say so: appearance streams often do not.
    [[nodiscard]] int copyForm(const QPDFObjectHandle &reference);

    /// The output's number for the object behind `reference`, when anything copied refers to it.
    [[nodiscard]] std::optional<int> copiedNumber(const QPDFObjectHandle &reference) const;

    /// The dictionary entries of a stream that describe its encoding and, unless `encodingOnly`, everything
    /// else worth keeping; without `/Length`.
    enum class StreamEntries { all, encodingOnly };
    void appendStreamEntries(std::string &out, const QPDFObjectHandle &stream, StreamEntries which);

    /// Writes the raw data of `stream` as the stream `number`, whose dictionary is `entries`.
    void writeStreamData(int number, std::string_view entries, const QPDFObjectHandle &stream);

    /// Writes everything that was referred to and is not written yet.
    void drain();

private:
    enum class Kind : std::uint8_t { value, resources, form };
    struct Pending {
        QPDFObjectHandle object;
        int number = 0;
        Kind kind = Kind::value;
    };

    int numberFor(const QPDFObjectHandle &reference, Kind kind);
    static void appendReference(std::string &out, int number);
    void appendDirect(std::string &out, QPDFObjectHandle value);
    void appendResourcesEntry(std::string &out, const QPDFObjectHandle &value);
    void appendWithoutFirst(std::string &out, const QPDFObjectHandle &array);
    [[nodiscard]] std::optional<Document::Place> largeDataInFile(const QPDFObjectHandle &stream) const;
    void copyFromFile(int number, std::string_view entries, const Document::Place &place);
    void write(const Pending &pending);

    Document *m_source;
    StreamingOutput *m_output;
    std::unordered_map<std::uint64_t, int> m_numbers;
    std::deque<Pending> m_pending;
    std::string m_syntax;
    std::string m_data;
};

} // namespace tallyfold::pdf
