// Reads pages of PDF files for the program that started it, and nothing else: it is handed files already
// open, on its standard input, a socket. It may be ended at any time, and ends itself when the other side
// does.

#include "pdf/ReaderMessages.h"
#include "reader/PopplerReader.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <memory>
#include <string>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace tallyfold;
using pdf::ReaderMessages::Reader;
using pdf::ReaderMessages::Request;
using pdf::ReaderMessages::Writer;

constexpr std::uint32_t mostAreas = 64;

/// What a page may take of the machine: much more than any page should, much less than there is.
void limitResources()
{
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    ::signal(SIGXFSZ, SIG_IGN); // A write beyond the limit fails; it need not end the process.
    const rlimit noNewFiles{0, 0};
    ::setrlimit(RLIMIT_FSIZE, &noNewFiles);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // Those reserve terabytes of addresses.
    const rlimit memory{1ULL << 30U, 1ULL << 30U};
    ::setrlimit(RLIMIT_AS, &memory);
#endif
}

/// Answers requests about the file that was opened last.
class Answers {
public:
    Writer to(Request kind, Reader &request, int descriptor)
    {
        Writer answer;
        const int page = request.take<int>();
        switch (kind) {
        case Request::open:
            open(descriptor);
            answer.put(m_pages != nullptr);
            answer.put(m_pages ? m_pages->pageCount() : 0);
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
        case Request::render:
            answer.put(render(page, request, descriptor));
            break;
        }
        return answer;
    }

private:
    template <typename Value> static void putOptional(Writer &answer, const std::optional<Value> &value)
    {
        answer.put(value.has_value());
        answer.put(value.value_or(Value{}));
    }

    void open(int descriptor)
    {
        m_pages.reset();
        if (m_file >= 0) {
            ::close(m_file);
        }
        m_file = ::dup(descriptor);
        m_pages = reader::openWithPoppler("/proc/self/fd/" + std::to_string(m_file));
    }

    void putTexts(Writer &answer, int page, Reader &request)
    {
        const auto count = std::min(request.take<std::uint32_t>(), mostAreas);
        std::vector<pdf::Rect> areas;
        for (std::uint32_t area = 0; area < count; ++area) {
            areas.push_back(request.take<pdf::Rect>());
        }
        const std::vector<QString> texts =
            m_pages ? m_pages->textIn(page, areas) : std::vector<QString>(areas.size());
        for (const QString &text : texts) {
            answer.putText(text);
        }
    }

    bool render(int page, Reader &request, int descriptor)
    {
        const int width = request.take<int>();
        const int height = request.take<int>();
        const double scale = request.take<double>();
        const auto bitmap = m_pages ? m_pages->render(page, width, height, scale) : std::nullopt;
        if (!bitmap || bitmap->pixels.empty()) {
            return false;
        }
        // Shared memory: a file size limit of nothing does not let it be written to as a file.
        void *shared =
            ::mmap(nullptr, bitmap->pixels.size(), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
        if (shared == MAP_FAILED) {
            return false;
        }
        std::memcpy(shared, bitmap->pixels.data(), bitmap->pixels.size());
        ::munmap(shared, bitmap->pixels.size());
        return true;
    }

    std::unique_ptr<pdf::PageReader> m_pages;
    int m_file = -1;
};

} // namespace

int main()
{
    limitResources();
    Answers answers;
    std::string message;
    int descriptor = -1;
    const auto noDeadline = std::chrono::steady_clock::time_point::max();
    while (pdf::ReaderMessages::receive(STDIN_FILENO, message, descriptor, noDeadline)) {
        Reader request(message);
        const Writer answer = answers.to(request.take<Request>(), request, descriptor);
        if (descriptor >= 0) {
            ::close(descriptor);
        }
        if (!pdf::ReaderMessages::send(STDIN_FILENO, answer.bytes())) {
            break;
        }
    }
    return 0;
}
