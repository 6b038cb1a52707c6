#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

using hb_face_t = struct hb_face_t;
using hb_font_t = struct hb_font_t;

namespace tallyfold::pdf {

/// A face of a font file that can be embedded: it has glyf or CFF outlines, and its embedding permissions
/// allow it. Immutable; may be used on several threads.
class FontFace {
public:
    /// The format of the outlines.
    enum class Outlines { trueType, cff };

    /// The bounding box of all glyphs, in thousandths of the font size.
    struct Box {
        double left = 0;
        double bottom = 0;
        double right = 0;
        double top = 0;
    };

    /// The face number `index` of the file at `path`; null when it cannot be read or embedded.
    [[nodiscard]] static std::shared_ptr<const FontFace> load(const std::filesystem::path &path,
                                                              unsigned index);

    ~FontFace();
    FontFace(const FontFace &) = delete;
    FontFace &operator=(const FontFace &) = delete;

    [[nodiscard]] hb_face_t *face() const;
    /// Scaled to font units.
    [[nodiscard]] hb_font_t *font() const;
    [[nodiscard]] Outlines outlines() const;
    /// The PostScript name, reduced to characters that a PDF name needs no escapes for.
    [[nodiscard]] const std::string &postScriptName() const;

    /// Lengths in thousandths of the font size.
    [[nodiscard]] double ascent() const;
    [[nodiscard]] double descent() const; ///< Below the baseline, a positive number.
    [[nodiscard]] double thousandths(double fontUnits) const;
    [[nodiscard]] double capHeight() const;
    [[nodiscard]] const Box &box() const;
    /// In degrees counterclockwise from the vertical: negative for italic faces.
    [[nodiscard]] double italicAngle() const;
    /// The nominal advance of a glyph.
    [[nodiscard]] double advance(std::uint32_t glyph) const;

    /// Whether the face has a glyph for the character.
    [[nodiscard]] bool has(char32_t character) const;
    /// Whether it has all printable ASCII characters.
    [[nodiscard]] bool hasAscii() const;
    /// Whether its .notdef glyph has an outline.
    [[nodiscard]] bool hasVisibleNotdef() const;
    /// Whether all Latin letters have the same width.
    [[nodiscard]] bool isFixedPitch() const;

private:
    struct Handles;
    explicit FontFace(std::unique_ptr<Handles> handles);
    [[nodiscard]] double advanceOf(char32_t character) const;
    std::unique_ptr<Handles> m_handles;
};

} // namespace tallyfold::pdf
