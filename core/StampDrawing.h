#pragma once

#include "core/NormalizedSettings.h"
#include "core/StampLine.h"
#include "pdf/copy/CopyWriter.h"
#include "pdf/syntax/ContentStream.h"
#include "pdf/text/ShapedLine.h"

#include <span>
#include <string>
#include <string_view>

namespace tallyfold {

/// Draws the stamp lines of one copy's pages: colour and font are settled once.
class StampDrawing {
public:
    /// Draws by `settings`, which outlive this; the opacity of their colour goes into `copy` when it is not
    /// full.
    StampDrawing(const NormalizedSettings &settings, pdf::CopyWriter &copy);

    /// The content stream, in points, that draws `lines` on a page of the size `page`; empty for no lines.
    [[nodiscard]] std::string content(std::span<const Stamper::Line> lines, const pdf::Size &page);

private:
    /// The name of a form that only draws white space far below any page, with an empty actual text. Readers
    /// that join consecutive text at one height into a line end the line there; otherwise the stamp would
    /// belong to the page's line, and in one from right to left a number's digits would come before its
    /// letters. An actual text that the page has left open, which some readers would extend to the stamp,
    /// ends there as well.
    std::string_view lineBreak();
    /// Draws it, `down` points further below.
    void appendBreak(double down, pdf::ContentStream &content);

    const StampSettings *m_settings;
    pdf::CopyWriter *m_copy;
    std::string m_ink;        ///< Operators that choose the text's colour and opacity.
    std::string_view m_break; ///< Once there is one.
};

} // namespace tallyfold
