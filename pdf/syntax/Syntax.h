#pragma once

#include "pdf/syntax/Geometry.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Appends a name; `name` begins with its slash. Other than regular characters are written as # and two
/// hexadecimal digits (PDF 1.7, 7.3.5).
void appendName(std::string &out, std::string_view name);

/// Appends "12 0 R"; the generation is always 0 (PDF 1.7, 7.3.10).
void appendReference(std::string &out, int number);

/// Appends `code` as four hexadecimal digits.
void appendHex(std::string &out, std::uint16_t code);

/// Appends a text string (PDF 1.7, 7.9.2.2): "()" for an empty one, else UTF-16 in hexadecimal, "<FEFF…>".
void appendTextString(std::string &out, std::u16string_view text);

/// Appends "[minX minY maxX maxY]".
void appendRect(std::string &out, const Rect &rect);

/// Appends the six numbers of `matrix`, separated by spaces.
void appendMatrix(std::string &out, const Matrix &matrix);

} // namespace tallyfold::pdf
