#pragma once

#include <QFont>

namespace tallyfold {

/// Text styles: sizes and weights relative to the system font.
enum class TextStyle {
    largeTitle, ///< Of a sheet.
    title,      ///< Of help pages and empty panes.
    headline,   ///< Names and section titles.
    body,
    callout, ///< Descriptions of an item.
    calloutStrong,
    caption, ///< Explanations.
    captionStrong,
};

/// The font for `style`, derived from the application font.
[[nodiscard]] QFont fontOf(TextStyle style);

/// `font` with digits of equal width, if available, so that numbers in columns align.
[[nodiscard]] QFont withTabularDigits(const QFont &font);

} // namespace tallyfold
