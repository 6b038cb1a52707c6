#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

using hb_face_t = struct hb_face_t;
using hb_font_t = struct hb_font_t;

namespace tallyfold::pdf {

/// One face of an installed font file that can be embedded: its outlines are glyf or CFF, and its licence
/// bits allow it. Immutable; may be used on several threads.
class FontFace {
public:
    /// How the outlines are stored.
    enum class Outlines { trueType, cff };

    /// The box around all glyphs of the font, in thousandths of the font size.
    struct Box {
        double left = 0;
        double bottom = 0;
        double right = 0;
        double top = 0;
    };

    /// The face number `index` of the file at `path`; null when it cannot be read or not be embedded.
    [[nodiscard]] static std::shared_ptr<const FontFace> load(const std::filesystem::path &path,
                                                              unsigned index);

    ~FontFace();
    FontFace(const FontFace &) = delete;
    FontFace &operator=(const FontFace &) = delete;

    [[nodiscard]] hb_face_t *face() const;
    /// Scaled to font units.
    [[nodiscard]] hb_font_t *font() const;
    [[nodiscard]] Outlines outlines() const;
    /// PostScript name, made of characters that a PDF name holds without escapes.
    [[nodiscard]] const std::string &postScriptName() const;

    /// Lengths in thousandths of the font size.
    [[nodiscard]] double ascent() const;
    [[nodiscard]] double descent() const; ///< Below the baseline, a positive number.
    [[nodiscard]] double thousandths(double fontUnits) const;
    [[nodiscard]] double capHeight() const;
    [[nodiscard]] const Box &box() const;
    /// In degrees counterclockwise from the vertical: negative for letters that lean to the right.
    [[nodiscard]] double italicAngle() const;
    /// The nominal advance of a glyph.
    [[nodiscard]] double advance(std::uint32_t glyph) const;

    /// Whether the font has a glyph of its own for the character.
    [[nodiscard]] bool has(char32_t character) const;
    /// Whether it has all printable ASCII characters.
    [[nodiscard]] bool hasAscii() const;
    /// Whether its glyph for missing characters can be seen.
    [[nodiscard]] bool hasBox() const;
    /// Whether all its Latin letters are of one width.
    [[nodiscard]] bool isFixedPitch() const;

private:
    struct Handles;
    explicit FontFace(std::unique_ptr<Handles> handles);
    [[nodiscard]] double advanceOf(char32_t character) const;
    std::unique_ptr<Handles> m_handles;
};

} // namespace tallyfold::pdf
