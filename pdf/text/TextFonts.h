#pragma once

#include "pdf/syntax/ContentStream.h"
#include "pdf/syntax/OutputObjects.h"
#include "pdf/text/EmbeddedFont.h"
#include "pdf/text/FontCatalog.h"
#include "pdf/text/ShapedLine.h"
#include "pdf/text/TextShaper.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// The fonts of one output file: looked up, measured, noted as used, and embedded once at the end.
class TextFonts {
public:
    /// Both must outlive this.
    TextFonts(OutputObjects &objects, FontCatalog &catalog);
    ~TextFonts();
    TextFonts(const TextFonts &) = delete;
    TextFonts &operator=(const TextFonts &) = delete;

    /// `text` as one line in the font `postScriptName` at `size` points: shaped, right-to-left text in its
    /// order, characters that the font lacks from other fonts of the catalogue. A character that no font has
    /// is shown as a box. Tabs and line breaks count as spaces, other control characters as nothing. The line
    /// is empty when the catalogue has no font that can be embedded.
    [[nodiscard]] ShapedLine shape(const QString &text, const QString &postScriptName, double size);

    /// Appends a text object (PDF 1.7, 9.4) that shows `line`, one of these fonts', with its left edge at `x`
    /// and its baseline at `baseline`, in the current colour.
    void show(const ShapedLine &line, double x, double baseline, ContentStream &content) const;

    /// Object number of the `/Font` resources of whatever shows text with these fonts.
    [[nodiscard]] int resources();
    /// Whether any text was shaped.
    [[nodiscard]] bool isUsed() const;

    /// Writes the fonts; called once, after the last text.
    void finish();

private:
    using Face = std::shared_ptr<const FontFace>;

    const Face &faceNamed(const QString &postScriptName);
    std::uint16_t numberOf(const Face &face);

    OutputObjects *m_objects;
    FontCatalog *m_catalog;
    TextShaper m_shaper;
    std::vector<EmbeddedFont> m_fonts;
    QString m_lastName;
    Face m_lastFace;
    int m_resources = 0;
};

} // namespace tallyfold::pdf
