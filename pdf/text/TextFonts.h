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

/// The fonts of one output file: finds them, shapes text, records the glyphs used, and embeds the subsets at
/// the end.
class TextFonts {
public:
    /// Both must outlive this.
    TextFonts(OutputObjects &objects, FontCatalog &catalog);
    ~TextFonts();
    TextFonts(const TextFonts &) = delete;
    TextFonts &operator=(const TextFonts &) = delete;

    /// `text` as one line in the font `postScriptName` at `size` points: shaped, reordered (UAX #9),
    /// characters that the font lacks from other fonts of the catalogue, else shown as .notdef. Tabs and
    /// line breaks count as spaces; other control characters are dropped. The line is empty when the
    /// catalogue has no font that can be embedded.
    [[nodiscard]] ShapedLine shape(const QString &text, const QString &postScriptName, double size);

    /// Appends a text object (PDF 1.7, 9.4) that shows `line`, which `shape` of this object gave, from `x`
    /// on the baseline `baseline`, in the current colour.
    void show(const ShapedLine &line, double x, double baseline, ContentStream &content) const;

    /// The object number of the `/Font` resources for content that uses these fonts.
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
