#pragma once

#include <QColor>
#include <QPalette>

namespace tallyfold {

/// The meaning of a colour. Every colour in the windows is one of these or a role of the palette.
enum class Tone {
    text,
    secondary, ///< Explanations.
    accent,    ///< Selection, and the primary button.
    onAccent,  ///< Text and symbols on the accent.
    warning,   ///< Needs attention.
    blocking,  ///< Prevents a production.
    success,
    card,   ///< Background of a group of controls.
    border, ///< Of cards, and between rows.
    edge,   ///< Of input fields and options; visible on any background.
};

/// The contrast between colours.
enum class Contrast { normal, high };

/// Whether `palette` belongs to a dark scheme.
[[nodiscard]] bool isDark(const QPalette &palette);

/// The contrast of `palette`: high if its text is black on white or white on black.
[[nodiscard]] Contrast contrastOf(const QPalette &palette);

/// The colour of `tone` for widgets of `palette`.
[[nodiscard]] QColor colorOf(Tone tone, const QPalette &palette);

/// The palettes of the light and the dark scheme, for desktops without a palette of their own.
[[nodiscard]] QPalette lightPalette(Contrast contrast = Contrast::normal);
[[nodiscard]] QPalette darkPalette(Contrast contrast = Contrast::normal);

} // namespace tallyfold
