#pragma once

#include "pdf/syntax/Geometry.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Appends a name as it is written in a file; `name` begins with its slash and is otherwise plain
/// (PDF 1.7, 7.3.5: other than regular characters are written as # and two digits).
void appendName(std::string &out, std::string_view name);

/// Appends "12 0 R": every object that is written here has the generation 0 (PDF 1.7, 7.3.10).
void appendReference(std::string &out, int number);

/// Appends `code` as four hexadecimal digits.
void appendHex(std::string &out, std::uint16_t code);

/// Appends a text string (PDF 1.7, 7.9.2.2): "()" for no text, else hexadecimal UTF-16, "<FEFF…>".
void appendTextString(std::string &out, std::u16string_view text);

/// Appends "[minX minY maxX maxY]".
void appendRect(std::string &out, const Rect &rect);

/// Appends the six numbers of `matrix`, separated by spaces.
void appendMatrix(std::string &out, const Matrix &matrix);

} // namespace tallyfold::pdf
