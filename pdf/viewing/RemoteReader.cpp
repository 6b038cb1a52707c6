#include "pdf/viewing/PageReader.h"

#include "files/Descriptor.h"
#include "pdf/viewing/ReaderMessages.h"
#include "pdf/viewing/ReaderProcess.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tallyfold::pdf {

namespace {

using ReaderMessages::Reader;
using ReaderMessages::Request;
using ReaderMessages::Writer;

Writer request(Request kind, int pageIndex)
{
    Writer message;
    message.put(kind);
    message.put(pageIndex);
    return message;
}

/// Pages as another process reads them.
class RemoteReader final : public PageReader {
public:
    RemoteReader(std::unique_ptr<ReaderProcess> process, int pageCount,
                 const std::optional<Rect> &firstCropBox, std::stop_token givenUp)
        : m_process(std::move(process)),
          m_pageCount(pageCount),
          m_firstCropBox(firstCropBox),
          m_givenUp(std::move(givenUp))
    {
    }

    ~RemoteReader() override
    {
        ReaderProcess::giveBack(std::move(m_process));
    }

    [[nodiscard]] int pageCount() const override
    {
        return m_pageCount;
    }

    [[nodiscard]] std::optional<Rect> cropBox(int pageIndex) override
    {
        return pageIndex == 0 ? m_firstCropBox : value<Rect>(Request::cropBox, pageIndex);
    }

    [[nodiscard]] std::optional<Size> mediaSize(int pageIndex) override
    {
        return value<Size>(Request::mediaSize, pageIndex);
    }

    [[nodiscard]] std::optional<std::vector<QString>> textIn(int pageIndex,
                                                             std::span<const Rect> areas) override
    {
        Writer message = request(Request::text, pageIndex);
        message.put(static_cast<std::uint32_t>(areas.size()));
        for (const Rect &area : areas) {
            message.put(area);
        }
        return askForTexts(message, areas.size());
    }

    [[nodiscard]] std::optional<QString> quickTextIn(int pageIndex, const Rect &area) override
    {
        Writer message = request(Request::quickText, pageIndex);
        message.put(area);
        const auto texts = askForTexts(message, 1);
        return texts ? std::optional(texts->front()) : std::nullopt;
    }

    [[nodiscard]] std::optional<Bitmap> render(int pageIndex, int width, int height, double scale) override
    {
        const std::size_t size =
            static_cast<std::size_t>(std::max(width, 0)) * static_cast<std::size_t>(std::max(height, 0)) * 4;
        const std::shared_ptr<SharedPixelBuffer> buffer = m_isUsable ? m_process->bufferFor(size) : nullptr;
        if (!buffer) {
            return std::nullopt;
        }
        Writer message = request(Request::render, pageIndex);
        message.put(width);
        message.put(height);
        message.put(scale);
        const auto answer = ask(message, buffer->descriptor());
        if (!answer || !Reader(*answer).takeFlag()) {
            return std::nullopt;
        }
        return Bitmap{width, height, Pixels(buffer->bytes().first(size), buffer)};
    }

private:
    std::optional<std::string> ask(const Writer &message, int descriptor)
    {
        // A process that was ended has forgotten the file; the questions that follow have no answer either.
        auto answer = m_isUsable ? m_process->ask(message.bytes(), descriptor, m_givenUp) : std::nullopt;
        m_isUsable = answer.has_value();
        return answer;
    }

    /// So many texts; nothing where the page was not read.
    std::optional<std::vector<QString>> askForTexts(const Writer &message, std::size_t count)
    {
        const auto bytes = ask(message, -1);
        if (!bytes) {
            return std::nullopt;
        }
        Reader answer(*bytes);
        const bool wasRead = answer.takeFlag();
        std::vector<QString> texts(count);
        for (QString &text : texts) {
            text = answer.takeText();
        }
        return wasRead && answer.isSound() ? std::optional(std::move(texts)) : std::nullopt;
    }

    template <typename Value> std::optional<Value> value(Request kind, int pageIndex)
    {
        const auto bytes = ask(request(kind, pageIndex), -1);
        if (!bytes) {
            return std::nullopt;
        }
        Reader answer(*bytes);
        const bool exists = answer.takeFlag();
        const auto result = answer.take<Value>();
        return exists && answer.isSound() ? std::optional(result) : std::nullopt;
    }

    std::unique_ptr<ReaderProcess> m_process;
    int m_pageCount;
    std::optional<Rect> m_firstCropBox;
    std::stop_token m_givenUp;
    bool m_isUsable = true;
};

std::unique_ptr<PageReader> readerOf(const files::Descriptor &file, const std::stop_token &givenUp = {})
{
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return nullptr;
    }
    std::unique_ptr<ReaderProcess> process = ReaderProcess::borrow();
    const auto bytes = process->ask(request(Request::open, 0).bytes(), file.number(), givenUp);
    if (!bytes) {
        return nullptr;
    }
    Reader answer(*bytes);
    const bool isOpen = answer.takeFlag();
    const int pages = answer.take<int>();
    const bool hasPage = answer.takeFlag();
    const Rect cropBox = answer.take<Rect>();
    if (!isOpen || !answer.isSound() || pages < 0) {
        ReaderProcess::giveBack(std::move(process));
        return nullptr;
    }
    return std::make_unique<RemoteReader>(std::move(process), pages,
                                          hasPage ? std::optional(cropBox) : std::nullopt, givenUp);
}

} // namespace

std::unique_ptr<PageReader> PageReader::open(const std::filesystem::path &path,
                                             const std::stop_token &givenUp)
{
    return readerOf(files::Descriptor::ofFile(path), givenUp);
}

std::unique_ptr<PageReader> PageReader::open(std::vector<char> bytes, const std::stop_token &givenUp)
{
    const files::Descriptor file(::memfd_create("document", MFD_CLOEXEC));
    std::size_t done = 0;
    while (file.isOpen() && done < bytes.size()) {
        const ssize_t count = ::write(file.number(), bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno != EINTR) {
            return nullptr;
        }
        done += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return readerOf(file, givenUp);
}

} // namespace tallyfold::pdf
