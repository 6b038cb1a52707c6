#pragma once

#include "files/Descriptor.h"
#include "pdf/viewing/ReaderMessages.h"
#include "reader/LocalReader.h"
#include "reader/MappedBufferCache.h"

#include <chrono>
#include <memory>
#include <string_view>

namespace tallyfold::reader {

/// Receives requests and sends answers about the file that was opened last. The answer is empty where a
/// request is cut short, or asks for a page or file that does not exist.
class RequestHandler {
public:
    /// Ends the process when an answer takes longer than `maxAnswerTime`, unless that is zero. The program
    /// itself waits for less, so this only happens when it is gone.
    explicit RequestHandler(std::chrono::seconds maxAnswerTime = std::chrono::seconds::zero());
    ~RequestHandler() = default;
    RequestHandler(const RequestHandler &) = delete;
    RequestHandler &operator=(const RequestHandler &) = delete;

    /// Waits for the next request on `socket`, without a time limit, and answers it. False when the
    /// connection has ended.
    [[nodiscard]] bool next(int socket);

    /// The answer to `message`, which came with the open file `descriptor`; -1 for none.
    [[nodiscard]] pdf::ReaderMessages::Writer handle(std::string_view message, int descriptor);

private:
    void open(int descriptor);
    void putTexts(pdf::ReaderMessages::Writer &answer, int page, pdf::ReaderMessages::Reader &request);
    void putQuickText(pdf::ReaderMessages::Writer &answer, int page, pdf::ReaderMessages::Reader &request);
    [[nodiscard]] bool render(int page, pdf::ReaderMessages::Reader &request, int descriptor);

    std::chrono::seconds m_maxAnswerTime;
    std::unique_ptr<LocalReader> m_pages;
    files::Descriptor m_file;
    MappedBufferCache m_buffers;
};

} // namespace tallyfold::reader
