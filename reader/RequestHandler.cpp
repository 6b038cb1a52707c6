#include "reader/RequestHandler.h"

#include "reader/PopplerReader.h"

#include <algorithm>
#include <fcntl.h>
#include <span>
#include <string>
#include <sys/time.h>
#include <vector>

namespace tallyfold::reader {

using pdf::ReaderMessages::Reader;
using pdf::ReaderMessages::Request;
using pdf::ReaderMessages::Writer;

namespace {

constexpr std::uint32_t maxAreas = 64;

template <typename Value> void putOptional(Writer &answer, const std::optional<Value> &value)
{
    answer.put(value.has_value());
    answer.put(value.value_or(Value{}));
}

/// Has the system end this process after `time`; zero takes that back.
bool endAfter(std::chrono::seconds time)
{
    itimerval timer{};
    timer.it_value.tv_sec = time.count();
    return ::setitimer(ITIMER_REAL, &timer, nullptr) == 0;
}

} // namespace

RequestHandler::RequestHandler(std::chrono::seconds maxAnswerTime) : m_maxAnswerTime(maxAnswerTime) {}

bool RequestHandler::next(int socket)
{
    const auto noDeadline = std::chrono::steady_clock::time_point::max();
    const auto request = pdf::ReaderMessages::receive(socket, noDeadline);
    if (!request) {
        return false;
    }
    const bool isTimed = m_maxAnswerTime > std::chrono::seconds::zero();
    if (isTimed && !endAfter(m_maxAnswerTime)) {
        return false;
    }
    const Writer answer = handle(request->bytes, request->descriptor.number());
    return pdf::ReaderMessages::send(socket, answer.bytes()) &&
           (!isTimed || endAfter(std::chrono::seconds::zero()));
}

Writer RequestHandler::handle(std::string_view message, int descriptor)
{
    Reader request(message);
    Writer answer;
    const auto kind = request.take<Request>();
    const int page = request.take<int>();
    if (!request.isSound()) {
        return answer;
    }
    switch (kind) {
    case Request::open:
        open(descriptor);
        answer.put(m_pages != nullptr);
        answer.put(m_pages ? m_pages->pageCount() : 0);
        putOptional(answer, m_pages ? m_pages->cropBox(page) : std::nullopt);
        break;
    case Request::cropBox:
        putOptional(answer, m_pages ? m_pages->cropBox(page) : std::nullopt);
        break;
    case Request::mediaSize:
        putOptional(answer, m_pages ? m_pages->mediaSize(page) : std::nullopt);
        break;
    case Request::text:
        putTexts(answer, page, request);
        break;
    case Request::quickText:
        putQuickText(answer, page, request);
        break;
    case Request::render:
        answer.put(render(page, request, descriptor));
        break;
    }
    return answer;
}

void RequestHandler::open(int descriptor)
{
    m_pages.reset();
    m_file = files::Descriptor(descriptor < 0 ? -1 : ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    if (m_file.isOpen()) {
        m_pages = openWithPoppler("/proc/self/fd/" + std::to_string(m_file.number()));
    }
}

void RequestHandler::putTexts(Writer &answer, int page, Reader &request)
{
    const auto count = std::min(request.take<std::uint32_t>(), maxAreas);
    std::vector<pdf::Rect> areas;
    for (std::uint32_t area = 0; area < count; ++area) {
        areas.push_back(request.take<pdf::Rect>());
    }
    const auto texts = m_pages && request.isSound() ? m_pages->textIn(page, areas) : std::nullopt;
    answer.put(texts.has_value());
    if (texts) {
        std::for_each(texts->begin(), texts->end(), [&](const QString &text) { answer.putText(text); });
    }
}

void RequestHandler::putQuickText(Writer &answer, int page, Reader &request)
{
    const auto area = request.take<pdf::Rect>();
    const auto text = m_pages && request.isSound() ? m_pages->quickTextIn(page, area) : std::nullopt;
    answer.put(text.has_value());
    if (text) {
        answer.putText(*text);
    }
}

bool RequestHandler::render(int page, Reader &request, int descriptor)
{
    const int width = request.take<int>();
    const int height = request.take<int>();
    const double scale = request.take<double>();
    const std::size_t size = pictureBytes(width, height).value_or(0);
    if (!m_pages || !request.isSound()) {
        return false;
    }
    const std::span<std::uint8_t> buffer = m_buffers.bytesOf(descriptor, size);
    return !buffer.empty() && m_pages->renderInto(buffer, page, width, height, scale);
}

} // namespace tallyfold::reader
