#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tallyfold::pdf {

/// Maps the glyphs of a CFF program to their CIDs (PDF 1.7, 9.7.4.2): by the charset of a CID-keyed program,
/// else a CID is the glyph number. Reads only that part of the format (Adobe Technical Note 5176).
class CffCharset {
public:
    /// CIDs are glyph numbers.
    CffCharset() = default;

    /// The charset of `program`, which has `glyphCount` glyphs; CIDs are glyph numbers where it is not keyed
    /// by CID or cannot be read.
    [[nodiscard]] static CffCharset of(std::string_view program, std::uint32_t glyphCount);

    [[nodiscard]] std::uint16_t cidOf(std::uint32_t glyph) const;

private:
    std::vector<std::uint16_t> m_cids;
};

} // namespace tallyfold::pdf
