// Any bytes as what the reader is asked: each request comes over a socket, with a file where it should and
// where it should not, and has an answer as long as it can be taken at all.

#include "fuzz/FileInMemory.h"
#include "pdf/viewing/ReaderMessages.h"
#include "reader/RequestHandler.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/socket.h>
#include <vector>

using namespace tallyfold;
namespace messages = pdf::ReaderMessages;

namespace {

constexpr std::string_view document =
    "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
    "2 0 obj<</Type/Pages/Kids[3 0 R 3 0 R]/Count 2/MediaBox[0 0 200 100]>>endobj\n"
    "3 0 obj<</Type/Page/Parent 2 0 R/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>>>endobj\n"
    "4 0 obj<</Length 42>>stream\nBT /F 10 Tf 20 20 Td (ABC 000123) Tj ET   \nendstream endobj\n"
    "5 0 obj<</Type/Font/Subtype/Type1/BaseFont/Courier>>endobj\n"
    "trailer<</Size 6/Root 1 0 R>>\n";

/// A message longer than this is cut into two: what is in flight has to fit into a socket.
constexpr std::size_t mostInFlight = 60'000;
/// Bytes of the file that pictures are put into. What is larger finds no room.
constexpr std::size_t roomForPicture = std::size_t{64} * 64 * 4;
/// Pixels of a picture. A request for more is left out: drawing it takes longer than trying a thousand
/// others.
constexpr std::int64_t mostPixels = 256 * 256;

/// Whether `message` asks for a picture of so many pixels that it is not worth its time.
bool isTooLarge(std::string_view message)
{
    messages::Reader reader(message);
    const bool isRender = reader.take<messages::Request>() == messages::Request::render;
    (void)reader.take<int>();
    const std::int64_t width = reader.take<int>();
    const std::int64_t height = reader.take<int>();
    return isRender && width > 0 && height > 0 && width * height > mostPixels;
}

/// Both ends of the link to a reader.
class Link {
public:
    Link()
    {
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_sockets.data()) != 0) {
            std::abort();
        }
    }
    ~Link()
    {
        hangUp();
        ::close(m_sockets[1]);
    }
    Link(const Link &) = delete;
    Link &operator=(const Link &) = delete;

    [[nodiscard]] int asker() const
    {
        return m_sockets[0];
    }
    [[nodiscard]] int answerer() const
    {
        return m_sockets[1];
    }
    void hangUp()
    {
        if (m_sockets[0] >= 0) {
            ::close(m_sockets[0]);
            m_sockets[0] = -1;
        }
    }

private:
    std::array<int, 2> m_sockets{};
};

/// Asks `message` with the file `descriptor`, lets the reader answer, and reads the answer.
void ask(Link &link, reader::RequestHandler &handler, std::string_view message, int descriptor)
{
    if (!messages::send(link.asker(), message, descriptor) || !handler.next(link.answerer())) {
        std::abort(); // A sound message has an answer, be it an empty one.
    }
    const auto answer = messages::receive(link.asker(), std::chrono::steady_clock::now());
    if (!answer || answer->descriptor.isOpen()) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const fuzz::FileInMemory file(document.data(), document.size());
    const std::vector<char> room(roomForPicture);
    const fuzz::FileInMemory picture(room.data(), room.size());
    if (!file.isSound() || !picture.isSound()) {
        std::abort();
    }
    const std::array descriptors{-1, file.descriptor(), picture.descriptor()};
    reader::RequestHandler handler;
    Link link;
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    while (!rest.empty()) {
        // A byte that says which file comes along, a length, so many bytes.
        const auto which = static_cast<std::uint8_t>(rest.front());
        rest.remove_prefix(1);
        std::uint32_t length = 0;
        if (rest.size() < sizeof length) {
            break;
        }
        std::memcpy(&length, rest.data(), sizeof length);
        if (length > std::min(rest.size() - sizeof length, mostInFlight)) {
            break;
        }
        const std::string_view message = rest.substr(sizeof length, length);
        if (!isTooLarge(message)) {
            ask(link, handler, message, descriptors[which % descriptors.size()]);
        }
        rest.remove_prefix(sizeof length + length);
    }
    // What is left is no message: the reader takes what it can, and then there is nothing more.
    const std::string_view tail = rest.substr(0, mostInFlight);
    if (!tail.empty() && ::send(link.asker(), tail.data(), tail.size(), MSG_NOSIGNAL) < 0) {
        std::abort();
    }
    link.hangUp();
    while (handler.next(link.answerer())) {
    }
    return 0;
}
