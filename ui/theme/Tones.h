#pragma once

#include <QColor>
#include <QPalette>

namespace tallyfold {

/// What a colour says. Every colour of the windows that is not a role of the palette is one of these.
enum class Tone {
    text,
    secondary, ///< Explanations.
    accent,    ///< What is chosen, and the one button that matters.
    onAccent,  ///< Upon the accent.
    warning,   ///< To be looked at.
    blocking,  ///< In the way of a production.
    success,
    card,   ///< Ground of a group of controls.
    border, ///< Of a card, and between rows.
    edge,   ///< Of what is typed in or chosen: seen upon any ground.
};

/// How far colours are apart.
enum class Contrast { normal, high };

/// Whether `palette` is that of a dark scheme.
[[nodiscard]] bool isDark(const QPalette &palette);

/// The contrast of `palette`: high where its text is black on white or white on black.
[[nodiscard]] Contrast contrastOf(const QPalette &palette);

/// The colour of `tone` for widgets of `palette`.
[[nodiscard]] QColor colorOf(Tone tone, const QPalette &palette);

/// The palettes of the light and the dark scheme, for desktops that give none of their own.
[[nodiscard]] QPalette lightPalette(Contrast contrast = Contrast::normal);
[[nodiscard]] QPalette darkPalette(Contrast contrast = Contrast::normal);

} // namespace tallyfold
