#pragma once

#include <cstdint>
#include <string>

namespace tallyfold::pdf {

/// Appends `value` as a PDF integer.
void appendInteger(std::string &out, std::int64_t value);

/// Appends `value` as a PDF real: decimal, at most `decimals` digits after the point, no trailing zeros, no
/// exponent (PDF 1.7, 7.3.3), in any locale. A value that is not finite becomes 0.
void appendNumber(std::string &out, double value, int decimals = 4);

} // namespace tallyfold::pdf
