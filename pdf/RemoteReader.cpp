#include "pdf/PageReader.h"

#include "pdf/ReaderMessages.h"
#include "pdf/ReaderProcess.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tallyfold::pdf {

namespace {

using ReaderMessages::Reader;
using ReaderMessages::Request;
using ReaderMessages::Writer;

/// More than any preview has.
constexpr std::size_t mostPixels = 100'000'000;

/// A descriptor that is closed at the end.
class File {
public:
    explicit File(int descriptor) : m_descriptor(descriptor) {}
    ~File()
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
    [[nodiscard]] int descriptor() const
    {
        return m_descriptor;
    }

private:
    int m_descriptor;
};

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
    RemoteReader(std::unique_ptr<ReaderProcess> process, int pageCount)
        : m_process(std::move(process)), m_pageCount(pageCount)
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
        return value<Rect>(Request::cropBox, pageIndex);
    }

    [[nodiscard]] std::optional<Size> mediaSize(int pageIndex) override
    {
        return value<Size>(Request::mediaSize, pageIndex);
    }

    [[nodiscard]] std::vector<QString> textIn(int pageIndex, std::span<const Rect> areas) override
    {
        std::vector<QString> texts(areas.size());
        Writer message = request(Request::text, pageIndex);
        message.put(static_cast<std::uint32_t>(areas.size()));
        for (const Rect &area : areas) {
            message.put(area);
        }
        if (ask(message, -1)) {
            Reader answer(m_answer);
            for (QString &text : texts) {
                text = answer.takeText();
            }
        }
        return texts;
    }

    [[nodiscard]] std::optional<Bitmap> render(int pageIndex, int width, int height, double scale) override
    {
        const std::size_t size =
            static_cast<std::size_t>(std::max(width, 0)) * static_cast<std::size_t>(std::max(height, 0)) * 4;
        const File shared(size == 0 || size / 4 > mostPixels ? -1 : ::memfd_create("bitmap", MFD_CLOEXEC));
        if (shared.descriptor() < 0 || ::ftruncate(shared.descriptor(), static_cast<off_t>(size)) != 0) {
            return std::nullopt;
        }
        Writer message = request(Request::render, pageIndex);
        message.put(width);
        message.put(height);
        message.put(scale);
        if (!ask(message, shared.descriptor()) || !Reader(m_answer).takeFlag()) {
            return std::nullopt;
        }
        Bitmap bitmap{width, height, std::vector<std::uint8_t>(size)};
        // Read, not mapped: the other process could make it shorter under our eyes.
        std::size_t done = 0;
        while (done < size) {
            const ssize_t count = ::pread(shared.descriptor(), bitmap.pixels.data() + done, size - done,
                                          static_cast<off_t>(done));
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count <= 0) {
                return std::nullopt;
            }
            done += static_cast<std::size_t>(count);
        }
        return bitmap;
    }

private:
    bool ask(const Writer &message, int descriptor)
    {
        // A process that was ended has forgotten the file; the questions that follow have no answer either.
        m_isUsable = m_isUsable && m_process->ask(message.bytes(), descriptor, m_answer);
        return m_isUsable;
    }

    template <typename Value> std::optional<Value> value(Request kind, int pageIndex)
    {
        if (!ask(request(kind, pageIndex), -1)) {
            return std::nullopt;
        }
        Reader answer(m_answer);
        const bool exists = answer.takeFlag();
        const auto result = answer.take<Value>();
        return exists && answer.isSound() ? std::optional(result) : std::nullopt;
    }

    std::unique_ptr<ReaderProcess> m_process;
    int m_pageCount;
    bool m_isUsable = true;
    std::string m_answer;
};

std::unique_ptr<PageReader> readerOf(const File &file)
{
    struct stat status {};
    if (file.descriptor() < 0 || ::fstat(file.descriptor(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return nullptr;
    }
    std::unique_ptr<ReaderProcess> process = ReaderProcess::borrow();
    std::string bytes;
    if (!process->ask(request(Request::open, 0).bytes(), file.descriptor(), bytes)) {
        return nullptr;
    }
    Reader answer(bytes);
    const bool isOpen = answer.takeFlag();
    const int pages = answer.take<int>();
    if (!isOpen || !answer.isSound() || pages < 0) {
        ReaderProcess::giveBack(std::move(process));
        return nullptr;
    }
    return std::make_unique<RemoteReader>(std::move(process), pages);
}

} // namespace

std::unique_ptr<PageReader> PageReader::open(const std::filesystem::path &path)
{
    return readerOf(File(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)));
}

std::unique_ptr<PageReader> PageReader::open(std::vector<char> bytes)
{
    const File file(::memfd_create("document", MFD_CLOEXEC));
    std::size_t done = 0;
    while (file.descriptor() >= 0 && done < bytes.size()) {
        const ssize_t count = ::write(file.descriptor(), bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno != EINTR) {
            return nullptr;
        }
        done += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return readerOf(file);
}

} // namespace tallyfold::pdf
