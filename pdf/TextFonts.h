#pragma once

#include "pdf/EmbeddedFont.h"
#include "pdf/OutputObjects.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using hb_buffer_t = struct hb_buffer_t;

namespace tallyfold::pdf {

/// A glyph in its place on the line. Lengths in thousandths of the font size.
struct ShapedGlyph {
    std::uint16_t code = 0;
    double nominalAdvance = 0; ///< What the file's width table says.
    double advance = 0;        ///< What shaping says: kerning, marks.
    double xOffset = 0;
    double yOffset = 0;
};

/// Glyphs of one font that follow one another.
struct ShapedRun {
    std::size_t font = 0; ///< Number of the font among those of the file.
    std::vector<ShapedGlyph> glyphs;
};

/// A measured line of text. Width, ascent and descent in points; ascent and descent are the largest of the
/// fonts in it.
struct ShapedLine {
    double width = 0;
    double ascent = 0;
    double descent = 0; ///< Below the baseline, a positive number.
    double size = 0;
    std::vector<ShapedRun> runs; ///< From left to right.
    QString spokenText;          ///< The text, where several glyphs show one stretch of it together.
};

/// The fonts of one output file: looked up, measured, noted as used, and embedded once at the end.
class TextFonts {
public:
    /// `objects` must outlive this.
    explicit TextFonts(OutputObjects &objects);
    ~TextFonts();
    TextFonts(const TextFonts &) = delete;
    TextFonts &operator=(const TextFonts &) = delete;

    /// `text` as one line in the font `postScriptName` at `size` points: shaped, right-to-left text in its
    /// order, characters that the font lacks from other installed fonts. A character that no font has is
    /// shown as a box.
    [[nodiscard]] ShapedLine shape(const QString &text, const QString &postScriptName, double size);

    /// Appends the operators that show `line` with its baseline beginning at `x`, `baseline`, in the current
    /// colour.
    void show(const ShapedLine &line, double x, double baseline, std::string &content);

    /// Object number of the `/Font` resources of whatever shows text with these fonts.
    [[nodiscard]] int resources();
    /// Whether any text was shaped.
    [[nodiscard]] bool isUsed() const;

    /// Writes the fonts; called once, after the last text.
    void finish();

private:
    struct Font {
        EmbeddedFont embedded;
        int number = 0;
    };
    struct BufferDestroyer {
        void operator()(hb_buffer_t *buffer) const;
    };
    struct Shaping;

    std::size_t fontFor(const std::shared_ptr<const FontFace> &face);
    void appendRun(Shaping &shaping, qsizetype start, qsizetype length,
                   const std::shared_ptr<const FontFace> &face, bool isRightToLeft, std::uint32_t script);

    OutputObjects *m_objects;
    std::vector<std::unique_ptr<Font>> m_fonts;
    std::unique_ptr<hb_buffer_t, BufferDestroyer> m_buffer;
    int m_resources = 0;
};

} // namespace tallyfold::pdf
