#include "pdf/syntax/NumberFormat.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace tallyfold::pdf {

void appendInteger(std::string &out, std::int64_t value)
{
    std::array<char, 24> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    out.append(digits.data(), result.ptr);
}

void appendNumber(std::string &out, double value, int decimals)
{
    constexpr double largest = 1e15; // A larger double has no decimals, and no page such a coordinate.
    if (!std::isfinite(value) || std::abs(value) > largest) {
        out.push_back('0');
        return;
    }
    std::array<char, 48> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                      std::chars_format::fixed, decimals);
    std::string_view text(digits.data(), static_cast<std::size_t>(result.ptr - digits.data()));
    if (text.find('.') != std::string_view::npos) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.remove_suffix(1);
        }
    }
    out.append(text == "-0" ? "0" : text);
}

} // namespace tallyfold::pdf
