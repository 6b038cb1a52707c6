#pragma once

#include <QFont>

namespace tallyfold {

/// The sizes and weights of text, all taken from the system's font.
enum class TextStyle {
    largeTitle, ///< Of a sheet.
    title,      ///< Of a page of the help, or of an empty pane.
    headline,   ///< A name, a section's title.
    body,
    callout, ///< What is said about a thing.
    calloutStrong,
    caption, ///< Explanations.
    captionStrong,
};

/// The font of `style`, from the application's font.
[[nodiscard]] QFont fontOf(TextStyle style);

/// `font` with digits of one width where it has them, so that numbers under one another line up.
[[nodiscard]] QFont withTabularDigits(const QFont &font);

} // namespace tallyfold
