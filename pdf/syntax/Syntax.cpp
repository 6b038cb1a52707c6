#include "pdf/syntax/Syntax.h"

#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Spelling.h"

#include <cctype>

namespace tallyfold::pdf {

namespace {

/// Coordinates of boxes are kept to a millionth of a point.
constexpr int boxDecimals = 6;

bool isRegular(char ch)
{
    return ch > ' ' && ch < '\x7f' && std::string_view("#()<>[]{}/%").find(ch) == std::string_view::npos;
}

bool isHexDigit(char ch)
{
    return std::isxdigit(static_cast<unsigned char>(ch)) != 0;
}

/// The parser's character for a "#" in a name without two hexadecimal digits after it. Viewers take the sign
/// literally, and content that uses the name has it so.
constexpr char strayNumberSign = '\0';

void appendEscaped(std::string &out, char ch)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(ch);
    out.push_back('#');
    out.push_back(digits[byte >> 4U]);
    out.push_back(digits[byte & 0xfU]);
}

} // namespace

void appendName(std::string &out, std::string_view name)
{
    out.push_back('/');
    name.remove_prefix(name.empty() ? 0 : 1);
    while (!name.empty()) {
        const char ch = name.front();
        name.remove_prefix(1);
        if (ch == strayNumberSign) {
            out.push_back('#');
            // Two digits here were escaped in the source, or the "#" would have been an escape.
            if (name.size() >= 2 && isHexDigit(name[0]) && isHexDigit(name[1])) {
                appendEscaped(out, name.front());
                name.remove_prefix(1);
            }
        } else if (isRegular(ch)) {
            out.push_back(ch);
        } else {
            appendEscaped(out, ch);
        }
    }
}

void appendReference(std::string &out, int number)
{
    appendInteger(out, number);
    out.append(spelling::referenceEnd);
}

void appendHex(std::string &out, std::uint16_t code)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
        out.push_back(digits[(std::uint32_t{code} >> shift) & 0xfU]);
    }
}

void appendTextString(std::string &out, std::u16string_view text)
{
    if (text.empty()) {
        out.append("()");
        return;
    }
    constexpr char16_t byteOrderMark = u'\ufeff';
    out.push_back('<');
    appendHex(out, byteOrderMark);
    for (const char16_t unit : text) {
        appendHex(out, unit);
    }
    out.push_back('>');
}

void appendRect(std::string &out, const Rect &rect)
{
    out.push_back('[');
    appendNumber(out, rect.minX, boxDecimals);
    for (const double value : {rect.minY, rect.maxX, rect.maxY}) {
        out.push_back(' ');
        appendNumber(out, value, boxDecimals);
    }
    out.push_back(']');
}

void appendMatrix(std::string &out, const Matrix &matrix)
{
    appendNumber(out, matrix.a, boxDecimals);
    for (const double value : {matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
        out.push_back(' ');
        appendNumber(out, value, boxDecimals);
    }
}

} // namespace tallyfold::pdf
