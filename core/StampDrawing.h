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

/// Draws the stamp lines on the pages of one copy.
class StampDrawing {
public:
    /// `settings` must outlive this. If their colour is not opaque, its graphics state is added to `copy`.
    StampDrawing(const NormalizedSettings &settings, pdf::CopyWriter &copy);

    /// The content stream, in points, that draws `lines` on a page of size `page`; empty without lines.
    [[nodiscard]] std::string content(std::span<const Stamper::Line> lines, const pdf::Size &page);

private:
    /// The name of a form XObject that shows only white space, far below any page, with an empty actual text.
    /// It separates the stamp from the text of the page for readers that join consecutive text on one
    /// baseline into a line. Otherwise the stamp would be part of that line; if it runs from right to left,
    /// the digits of a number would precede its letters. It also ends an actual text that the page has left
    /// open, which some readers would extend to the stamp.
    std::string_view lineBreak();
    /// Draws that form, moved down by `down` points.
    void appendBreak(double down, pdf::ContentStream &content);

    const StampSettings *m_settings;
    pdf::CopyWriter *m_copy;
    std::string m_ink;        ///< Operators that set the colour and opacity of text.
    std::string_view m_break; ///< Name of the form; empty before its first use.
};

} // namespace tallyfold
