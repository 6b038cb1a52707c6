#pragma once

#include <QColor>
#include <QPainter>
#include <QPen>
#include <QRectF>
#include <QStyleOption>

namespace tallyfold {

/// `color` with `opacity`, from 0 to 1.
[[nodiscard]] QColor faded(QColor color, float opacity);

/// Draws a box with the corner radius `round`; its border is within `rectangle`.
void drawBox(QPainter &painter, const QRectF &rectangle, const QColor &ground, const QPen &edge,
             double round);

/// Draws a chevron in the centre of `place`.
void drawChevron(QPainter &painter, const QRectF &place, Qt::ArrowType direction, const QColor &ink);

} // namespace tallyfold
