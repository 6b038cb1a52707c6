#pragma once

#include "pdf/FontFace.h"
#include "pdf/OutputObjects.h"

#include <QString>

#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace tallyfold::pdf {

/// One font of an output file: a composite font (PDF 1.7, 9.7) whose two-byte codes are given out in order of
/// first use. A code stands for a glyph together with the text it shows, so that one glyph can show several
/// texts, and .notdef the text of any character that no font has.
class EmbeddedFont {
public:
    explicit EmbeddedFont(std::shared_ptr<const FontFace> face);

    [[nodiscard]] const FontFace &face() const;

    /// The code for `glyph` showing `text`. Digits get theirs in one go, so that files which differ in their
    /// numbers alone have the same font.
    [[nodiscard]] std::uint16_t codeFor(std::uint32_t glyph, const QString &text);

    /// Writes the font as the object `number`, with all it needs.
    void write(OutputObjects &objects, int number) const;

private:
    struct Use {
        std::uint32_t glyph = 0;
        QString text;
    };

    std::uint16_t add(std::uint32_t glyph, const QString &text);

    std::shared_ptr<const FontFace> m_face;
    std::map<std::pair<std::uint32_t, QString>, std::uint16_t> m_codes;
    std::vector<Use> m_uses; ///< By code, the first one has the code 1.
    bool m_hasDigits = false;
};

} // namespace tallyfold::pdf
