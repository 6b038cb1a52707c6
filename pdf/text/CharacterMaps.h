#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Entries of the dictionary of an encoding CMap's stream.
[[nodiscard]] std::string_view encodingEntries();

/// A CMap (PDF 1.7, 9.7.5.3) that maps the two-byte codes 1, 2, 3 … to `cids`, in that order.
[[nodiscard]] std::string encodingMap(std::span<const std::uint16_t> cids);

/// A ToUnicode CMap (PDF 1.7, 9.10.3) that maps the two-byte codes 1, 2, 3 … to `texts`, in that order; a
/// code without text is left out.
[[nodiscard]] std::string toUnicodeMap(std::span<const std::u16string> texts);

} // namespace tallyfold::pdf
