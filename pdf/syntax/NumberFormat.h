#pragma once

#include <cstdint>
#include <string>

namespace tallyfold::pdf {

/// Appends `value` in plain decimal.
void appendInteger(std::string &out, std::int64_t value);

/// Appends `value` as a PDF real: plain decimal, at most `decimals` places after the point, no trailing
/// zeros, the same in every locale (PDF 1.7, 7.3.3 knows no exponents). A value that is not finite becomes 0.
void appendNumber(std::string &out, double value, int decimals = 4);

} // namespace tallyfold::pdf
