#include "pdf/source/PageContent.h"

#include "pdf/source/Document.h"
#include "pdf/source/FailureLog.h"
#include "pdf/source/RawStream.h"

#include <stdexcept>

namespace tallyfold::pdf {

std::vector<QPDFObjectHandle> contentStreams(Document &document, const QPDFObjectHandle &contents)
{
    std::vector<QPDFObjectHandle> streams;
    QPDFObjectHandle entry = document.fetch(contents);
    if (entry.isStream()) {
        streams.push_back(entry);
    } else if (entry.isArray()) {
        for (int index = 0, count = entry.getArrayNItems(); index < count; ++index) {
            QPDFObjectHandle item = document.fetch(entry.getArrayItem(index));
            if (item.isStream()) {
                streams.push_back(item);
            }
        }
    }
    return streams;
}

std::string joinedContent(const std::vector<QPDFObjectHandle> &streams, std::size_t maxSize)
{
    std::string content;
    bool isTooLong = false;
    RawStream pipe([&](std::string_view bytes) {
        if (content.size() + bytes.size() > maxSize) {
            isTooLong = true; // The parser swallows what its pipeline throws, but stops.
            throw std::length_error("page content");
        }
        content.append(bytes);
    });
    for (QPDFObjectHandle stream : streams) {
        bool isDecoded = false;
        if (!stream.pipeStreamData(&pipe, &isDecoded, 0, qpdf_dl_specialized, true, false) || !isDecoded) {
            logDamagedStream(stream);
        }
        content.push_back('\n');
        if (isTooLong) {
            throw std::length_error("page content");
        }
    }
    return content;
}

} // namespace tallyfold::pdf
