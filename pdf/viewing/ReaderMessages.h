#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// What the program and its reader process say to each other: each message is a length and so many bytes, and
/// may bring an open file with it. Both ends distrust what they get.
namespace tallyfold::pdf::ReaderMessages {

/// What the reader is asked to do.
enum class Request : std::uint8_t {
    open,      ///< Page, brings the file. Reply: whether it opened, its page count, and whether there is that
               ///< page, and its crop box: what is always asked first.
    cropBox,   ///< Page. Reply: whether there is one, and the box.
    mediaSize, ///< Page. Reply: whether there is one, and the size.
    text,      ///< Page and areas. Reply: a text for each area.
    render,    ///< Page, width, height, scale; brings a file of the size of the bitmap. Reply: whether it is
               ///< filled.
};

/// Longer messages are not sent and not taken.
inline constexpr std::uint32_t longestMessage = 16 * 1024 * 1024;

/// A message in the making.
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

/// A message being read. What is not there reads as zero, and `isSound` is false then.
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

/// Sends a message through `socket`, with the open file `descriptor` unless that is -1. False when it cannot.
[[nodiscard]] bool send(int socket, std::string_view message, int descriptor = -1);

/// Waits for a message on `socket` until `deadline`. False when none came, or none that can be taken.
/// `descriptor` is the file that came with it, for the caller to close, or -1.
[[nodiscard]] bool receive(int socket, std::string &message, int &descriptor,
                           std::chrono::steady_clock::time_point deadline);

} // namespace tallyfold::pdf::ReaderMessages
