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
};

/// Whether `palette` is that of a dark scheme.
[[nodiscard]] bool isDark(const QPalette &palette);

/// The colour of `tone` for widgets of `palette`.
[[nodiscard]] QColor colorOf(Tone tone, const QPalette &palette);

/// The palettes of the light and the dark scheme, for desktops that give none of their own.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

} // namespace tallyfold
