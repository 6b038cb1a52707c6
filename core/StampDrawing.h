#pragma once

#include "core/Stamper.h"
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
    /// `settings` normalised; the opacity of its colour goes into `copy` when it is not full.
    StampDrawing(const StampSettings &settings, pdf::CopyWriter &copy);

    /// The content stream, in points, that draws `lines` on a page of the size `page`; empty for no lines.
    [[nodiscard]] std::string content(std::span<const Stamper::Line> lines, const pdf::Size &page);

private:
    /// Name of a form that draws white space far below any page, in an empty text aside, and nothing else.
    /// Readers that make one line of the text that follows at one height end it there; else the stamp would
    /// be part of the page's line, and where that runs from right to left, a number's digits would come
    /// before its letters. And a text aside that the page has left open, which would stand for the stamp as
    /// well in some readers, ends there.
    std::string_view lineBreak();
    /// Draws it, `down` points further below.
    void appendBreak(double down, pdf::ContentStream &content);

    const StampSettings *m_settings;
    pdf::CopyWriter *m_copy;
    std::string m_ink;        ///< Operators that choose the text's colour and opacity.
    std::string_view m_break; ///< Once there is one.
};

} // namespace tallyfold
