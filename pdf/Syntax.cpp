#include "pdf/Syntax.h"

#include "pdf/NumberFormat.h"

namespace tallyfold::pdf {

namespace {

/// Boxes come back as they were given, to a millionth of a point.
constexpr int boxDecimals = 6;

bool isRegular(char ch)
{
    return ch > ' ' && ch < '\x7f' && std::string_view("#()<>[]{}/%").find(ch) == std::string_view::npos;
}

} // namespace

void appendName(std::string &out, std::string_view name)
{
    constexpr std::string_view digits = "0123456789abcdef";
    out.push_back('/');
    name.remove_prefix(name.empty() ? 0 : 1);
    for (const char ch : name) {
        if (isRegular(ch)) {
            out.push_back(ch);
            continue;
        }
        const auto byte = static_cast<unsigned char>(ch);
        out.push_back('#');
        out.push_back(digits[byte >> 4U]);
        out.push_back(digits[byte & 0xfU]);
    }
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
