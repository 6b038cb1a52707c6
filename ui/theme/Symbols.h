#pragma once

#include "ui/theme/Tones.h"

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <QStringList>

namespace tallyfold {

/// The symbol `name` (such as "doc.on.doc") as an icon in `tone`. Scalable, and painted in the colours of the
/// current palette. Null for an unknown name.
[[nodiscard]] QIcon symbolIcon(const QString &name, Tone tone = Tone::text);

/// The symbol as a picture of `size` device-independent pixels for a screen of `pixelRatio`.
[[nodiscard]] QPixmap symbolPixmap(const QString &name, int size, const QColor &color, double pixelRatio);

/// The names of all symbols.
[[nodiscard]] QStringList symbolNames();

} // namespace tallyfold
