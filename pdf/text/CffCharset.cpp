#include "pdf/text/CffCharset.h"

#include <cstddef>

namespace tallyfold::pdf {

namespace {

/// Reads big-endian numbers; beyond the end they are 0 and `failed` is set.
class Cursor {
public:
    Cursor(std::string_view bytes, std::size_t at) : m_bytes(bytes), m_at(at) {}

    std::uint32_t number(unsigned width)
    {
        std::uint32_t value = 0;
        for (unsigned count = 0; count < width; ++count) {
            failed = failed || m_at >= m_bytes.size();
            value = (value << 8U) | (failed ? 0U : static_cast<unsigned char>(m_bytes[m_at]));
            ++m_at;
        }
        return value;
    }

    [[nodiscard]] std::size_t at() const
    {
        return m_at;
    }

    bool failed = false;

private:
    std::string_view m_bytes;
    std::size_t m_at;
};

/// The end of an INDEX, and its first item.
struct Index {
    std::size_t end = 0;
    std::size_t firstStart = 0;
    std::size_t firstEnd = 0;
};

Index readIndex(std::string_view bytes, std::size_t start)
{
    Cursor cursor(bytes, start);
    const std::uint32_t count = cursor.number(2);
    if (count == 0) {
        return {cursor.at(), cursor.at(), cursor.at()};
    }
    const std::uint32_t offsetWidth = cursor.number(1);
    const std::size_t offsets = cursor.at();
    const std::size_t data = offsets + (static_cast<std::size_t>(count) + 1) * offsetWidth - 1;
    const auto offset = [&](std::size_t item) {
        return Cursor(bytes, offsets + item * offsetWidth).number(offsetWidth);
    };
    return {data + offset(count), data + offset(0), data + offset(1)};
}

/// The entries of the Top DICT that concern the charset.
struct TopDictionary {
    bool isKeyedByCid = false;
    std::size_t charset = 0;
};

TopDictionary readTopDictionary(std::string_view bytes, const Index &index)
{
    TopDictionary top;
    Cursor cursor(bytes, index.firstStart);
    std::uint32_t operand = 0;
    while (cursor.at() < index.firstEnd && !cursor.failed) {
        const std::uint32_t first = cursor.number(1);
        if (first == 12) {
            top.isKeyedByCid = top.isKeyedByCid || cursor.number(1) == 30;
        } else if (first == 15) {
            top.charset = operand;
        } else if (first == 28) {
            operand = cursor.number(2);
        } else if (first == 29) {
            operand = cursor.number(4);
        } else if (first == 30) { // A real number ends with a nibble of ones.
            for (std::uint32_t nibbles = 0;
                 (nibbles & 0xfU) != 0xfU && (nibbles & 0xf0U) != 0xf0U && !cursor.failed;) {
                nibbles = cursor.number(1);
            }
        } else if (first >= 247 && first <= 250) {
            operand = (first - 247) * 256 + cursor.number(1) + 108;
        } else if (first >= 251 && first <= 254) {
            (void)cursor.number(1);
            operand = 0;
        } else if (first >= 32) {
            operand = first - 139;
        }
    }
    return top;
}

} // namespace

CffCharset CffCharset::of(std::string_view program, std::uint32_t glyphCount)
{
    CffCharset result;
    const std::size_t headerSize = Cursor(program, 2).number(1);
    const TopDictionary top =
        readTopDictionary(program, readIndex(program, readIndex(program, headerSize).end));
    constexpr std::size_t predefinedCharsets = 2;
    if (!top.isKeyedByCid || top.charset <= predefinedCharsets) {
        return result;
    }
    std::vector<std::uint16_t> cids{0};
    Cursor cursor(program, top.charset);
    const std::uint32_t format = cursor.number(1);
    while (cids.size() < glyphCount && !cursor.failed) {
        const std::uint32_t first = cursor.number(2);
        const std::uint32_t more = format == 0 ? 0 : cursor.number(format == 1 ? 1 : 2);
        for (std::uint32_t step = 0; step <= more && cids.size() < glyphCount; ++step) {
            cids.push_back(static_cast<std::uint16_t>(first + step));
        }
    }
    if (!cursor.failed) {
        result.m_cids = std::move(cids);
    }
    return result;
}

std::uint16_t CffCharset::cidOf(std::uint32_t glyph) const
{
    return glyph < m_cids.size() ? m_cids[glyph] : static_cast<std::uint16_t>(glyph);
}

} // namespace tallyfold::pdf
