#include "pdf/viewing/ReaderMessages.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace tallyfold::pdf::ReaderMessages {

namespace {

using Clock = std::chrono::steady_clock;

/// Ancillary data for one descriptor.
union ControlBuffer {
    cmsghdr alignment;
    std::array<char, CMSG_SPACE(sizeof(int))> bytes;
};

bool waitUntilReadable(int socket, Clock::time_point deadline)
{
    if (deadline == Clock::time_point::max()) {
        return true; // Without a deadline, the read itself waits.
    }
    while (true) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd poll{socket, POLLIN, 0};
        const int ready = ::poll(&poll, 1, static_cast<int>(std::clamp<long long>(left, 0, 60'000'000)));
        if (ready > 0) {
            return true;
        }
        if (ready == 0 || errno != EINTR) {
            return false;
        }
    }
}

/// Reads once, at most `room.size()` bytes; -1 on failure, 0 at the end.
ssize_t readSome(int socket, std::span<char> room, files::Descriptor &descriptor)
{
    iovec part{room.data(), room.size()};
    ControlBuffer control{};
    msghdr head{};
    head.msg_iov = &part;
    head.msg_iovlen = 1;
    head.msg_control = control.bytes.data();
    head.msg_controllen = control.bytes.size();
    ssize_t count = 0;
    do {
        count = ::recvmsg(socket, &head, MSG_CMSG_CLOEXEC);
    } while (count < 0 && errno == EINTR);
    for (cmsghdr *item = CMSG_FIRSTHDR(&head); count > 0 && item != nullptr;
         item = CMSG_NXTHDR(&head, item)) {
        if (item->cmsg_level == SOL_SOCKET && item->cmsg_type == SCM_RIGHTS) {
            int number = -1;
            std::memcpy(&number, CMSG_DATA(item), sizeof number);
            descriptor = files::Descriptor(number);
        }
    }
    return count;
}

/// Reads at least `least` bytes into `bytes`, and more only if they are available. Gives their number;
/// nothing at the deadline or the end of the connection.
std::optional<std::size_t> readAtLeast(int socket, std::span<char> bytes, std::size_t least,
                                       files::Descriptor &descriptor, Clock::time_point deadline)
{
    std::size_t done = 0;
    while (done < least) {
        const ssize_t count =
            waitUntilReadable(socket, deadline) ? readSome(socket, bytes.subspan(done), descriptor) : -1;
        if (count <= 0) {
            return std::nullopt;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

} // namespace

std::optional<Message> receive(int socket, Clock::time_point deadline)
{
    Message message;
    // Most messages are short and arrive together with their length. No message follows before the answer.
    std::array<char, 4096> start{};
    std::uint32_t length = 0;
    const auto begun = readAtLeast(socket, start, sizeof length, message.descriptor, deadline);
    if (!begun) {
        return std::nullopt;
    }
    std::memcpy(&length, start.data(), sizeof length);
    const std::size_t there = *begun - sizeof length;
    if (length > maxMessageSize || there > length) {
        return std::nullopt;
    }
    message.bytes.assign(start.data() + sizeof length, there);
    message.bytes.resize(length);
    const std::span<char> rest = std::span(message.bytes).subspan(there);
    if (!readAtLeast(socket, rest, rest.size(), message.descriptor, deadline)) {
        return std::nullopt;
    }
    return message;
}

void Writer::putText(const QString &text)
{
    put(static_cast<std::uint32_t>(text.size()));
    m_bytes.append(reinterpret_cast<const char *>(text.utf16()), static_cast<std::size_t>(text.size()) * 2);
}

QString Reader::takeText()
{
    const auto length = std::size_t{take<std::uint32_t>()};
    if (length > m_rest.size() / 2) {
        m_isSound = false;
        return {};
    }
    QString text(static_cast<qsizetype>(length), u'\0');
    std::memcpy(text.data(), m_rest.data(), length * 2);
    m_rest.remove_prefix(length * 2);
    return text;
}

bool send(int socket, std::string_view message, int descriptor)
{
    if (message.size() > maxMessageSize) {
        return false;
    }
    const auto length = static_cast<std::uint32_t>(message.size());
    std::string bytes(reinterpret_cast<const char *>(&length), sizeof length);
    bytes.append(message);
    ControlBuffer control{};
    std::string_view rest = bytes;
    while (!rest.empty()) {
        iovec part{const_cast<char *>(rest.data()), rest.size()}; // Not modified.
        msghdr head{};
        head.msg_iov = &part;
        head.msg_iovlen = 1;
        if (descriptor >= 0) {
            head.msg_control = control.bytes.data();
            head.msg_controllen = control.bytes.size();
            cmsghdr *item = CMSG_FIRSTHDR(&head);
            item->cmsg_level = SOL_SOCKET;
            item->cmsg_type = SCM_RIGHTS;
            item->cmsg_len = CMSG_LEN(sizeof descriptor);
            std::memcpy(CMSG_DATA(item), &descriptor, sizeof descriptor);
        }
        const ssize_t count = ::sendmsg(socket, &head, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return false;
        }
        descriptor = -1; // It is sent with the first bytes.
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace tallyfold::pdf::ReaderMessages
