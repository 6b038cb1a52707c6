#pragma once

#include "pdf/text/FontFace.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// A font subset, ready to be embedded.
struct FontProgram {
    std::string bytes;               ///< Compressed with Flate.
    std::size_t length = 0;          ///< Before compression.
    std::vector<std::uint16_t> cids; ///< The CID in `bytes` of each requested glyph, in that order.
};

/// The subset of `face` with .notdef and `glyphs`, without tables that only shaping needs: a TrueType file
/// whose CIDs are glyph numbers, or a bare CFF program (PDF 1.7, 9.9). Null when the font is too damaged.
/// Recent results are cached, since many small files are stamped with the same characters. May be used on
/// several threads.
[[nodiscard]] std::shared_ptr<const FontProgram> subset(const std::shared_ptr<const FontFace> &face,
                                                        const std::vector<std::uint32_t> &glyphs);

} // namespace tallyfold::pdf
