#pragma once

#include "pdf/syntax/Geometry.h"

#include <QString>

#include <poppler-page.h>

#include <span>
#include <vector>

namespace tallyfold::reader {

/// The text of `page` in `area`, as `PageReader::quickTextIn` gives it.
[[nodiscard]] QString quickTextIn(const poppler::page &page, const pdf::Rect &area);

/// The words of one page with the boxes of their glyphs, read once for any number of areas.
class PageText {
public:
    /// Reads all text of `page`. May throw what the standard library throws.
    explicit PageText(const poppler::page &page);

    /// The text in each of `areas`, as `PageReader::textIn` gives it.
    [[nodiscard]] std::vector<QString> in(std::span<const pdf::Rect> areas) const;

private:
    [[nodiscard]] QString inDisplayed(const pdf::Rect &area) const;

    pdf::Matrix m_toDisplay;
    std::vector<poppler::text_box> m_words;
};

} // namespace tallyfold::reader
