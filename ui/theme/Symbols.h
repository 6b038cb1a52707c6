#pragma once

#include "ui/theme/Tones.h"

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <QStringList>

namespace tallyfold {

/// The symbol `name` (such as "doc.on.doc") as an icon in `tone`. Sharp at every size and scale, and in the
/// colours of the palette that holds when it is drawn. Null for a name that there is no symbol of.
[[nodiscard]] QIcon symbolIcon(const QString &name, Tone tone = Tone::text);

/// The symbol as a picture of `size` device-independent pixels for a screen of `pixelRatio`.
[[nodiscard]] QPixmap symbolPixmap(const QString &name, int size, const QColor &color, double pixelRatio);

/// All names that there is a symbol of.
[[nodiscard]] QStringList symbolNames();

} // namespace tallyfold
