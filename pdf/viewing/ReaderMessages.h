#pragma once

#include "files/Descriptor.h"

#include <QString>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// The protocol between the program and its reader process: a message is a length and so many bytes, with at
/// most one open file. Both ends validate what they receive.
namespace tallyfold::pdf::ReaderMessages {

/// Requests to the reader.
enum class Request : std::uint8_t {
    open,      ///< Page, with the file. Reply: whether it opened, its page count, whether there is that page,
               ///< and its crop box, which is always needed first.
    cropBox,   ///< Page. Reply: whether there is one, and the box.
    mediaSize, ///< Page. Reply: whether there is one, and the size.
    text,      ///< Page and areas. Reply: whether it was read, and then a text for each area.
    render,    ///< Page, width, height, scale, with a file of the size of the bitmap. Reply: whether it was
               ///< drawn.
    quickText, ///< Page and area. Reply: whether it was read, and then a text.
};

/// Larger messages are neither sent nor received.
inline constexpr std::uint32_t maxMessageSize = 16 * 1024 * 1024;

/// Writes a message.
class Writer {
public:
    template <typename Value> void put(const Value &value)
    {
        static_assert(std::is_trivially_copyable_v<Value>);
        const auto *bytes = reinterpret_cast<const char *>(&value);
        m_bytes.append(bytes, sizeof value);
    }
    void putText(const QString &text);
    [[nodiscard]] std::string_view bytes() const
    {
        return m_bytes;
    }

private:
    std::string m_bytes;
};

/// Reads a message. Beyond its end everything is zero and `isSound` false.
class Reader {
public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}
    template <typename Value> Value take()
    {
        static_assert(std::is_trivially_copyable_v<Value>);
        static_assert(!std::is_same_v<Value, bool>, "a byte of another value than 0 and 1 is no bool");
        Value value{};
        if (m_rest.size() < sizeof value) {
            m_isSound = false;
            return value;
        }
        std::memcpy(&value, m_rest.data(), sizeof value);
        m_rest.remove_prefix(sizeof value);
        return value;
    }
    /// Whether the next byte is anything but zero.
    [[nodiscard]] bool takeFlag()
    {
        return take<std::uint8_t>() != 0;
    }
    [[nodiscard]] QString takeText();
    [[nodiscard]] bool isSound() const
    {
        return m_isSound;
    }

private:
    std::string_view m_rest;
    bool m_isSound = true;
};

/// Sends a message through `socket`, with the open file `descriptor` unless that is -1. False on failure.
[[nodiscard]] bool send(int socket, std::string_view message, int descriptor = -1);

/// A message, and the open file that came with it, if any did.
struct Message {
    std::string bytes;
    files::Descriptor descriptor;
};

/// Receives a message from `socket`; nothing when there is none by `deadline`, or it is malformed.
[[nodiscard]] std::optional<Message> receive(int socket, std::chrono::steady_clock::time_point deadline);

} // namespace tallyfold::pdf::ReaderMessages
