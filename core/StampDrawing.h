#pragma once

#include "core/Stamper.h"
#include "pdf/CopyWriter.h"

#include <span>
#include <string>

namespace tallyfold {

/// Draws the stamp lines of one copy's pages: colour and font are settled once.
class StampDrawing {
public:
    /// `settings` normalised; the opacity of its colour goes into `copy` when it is not full.
    StampDrawing(const StampSettings &settings, pdf::CopyWriter &copy);

    /// The content stream, in points, that draws `lines` on a page of the size `page`; empty for no lines.
    [[nodiscard]] std::string content(std::span<const Stamper::Line> lines, const pdf::Size &page);

private:
    const StampSettings *m_settings;
    pdf::CopyWriter *m_copy;
    std::string m_ink; ///< Operators that choose the text's colour and opacity.
};

} // namespace tallyfold
