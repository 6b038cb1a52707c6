#pragma once

#include "pdf/text/FontFace.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// A font cut down to some of its glyphs, ready to be embedded.
struct FontProgram {
    std::string bytes;               ///< Compressed with Flate.
    std::size_t length = 0;          ///< Before compression.
    std::vector<std::uint16_t> cids; ///< For each glyph asked for, in that order, its CID in `bytes`.
};

/// `face` with .notdef and `glyphs`, and nothing that only matters for shaping: a TrueType file whose CIDs
/// are glyph numbers, or a bare CFF program (PDF 1.7, 9.9). Null when the font is too broken for that. The
/// most recent results are remembered, for many small files are stamped with the same few characters; may be
/// used on several threads.
[[nodiscard]] std::shared_ptr<const FontProgram> subset(const std::shared_ptr<const FontFace> &face,
                                                        const std::vector<std::uint32_t> &glyphs);

} // namespace tallyfold::pdf
