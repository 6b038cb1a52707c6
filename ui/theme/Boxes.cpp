#include "ui/theme/Boxes.h"

#include <QPolygonF>

namespace tallyfold {

QColor faded(QColor color, float opacity)
{
    color.setAlphaF(opacity);
    return color;
}

void drawBox(QPainter &painter, const QRectF &rectangle, const QColor &ground, const QPen &edge, double round)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(edge);
    painter.setBrush(ground);
    const double inset = edge.style() == Qt::NoPen ? 0 : edge.widthF() / 2;
    painter.drawRoundedRect(rectangle.adjusted(inset, inset, -inset, -inset), round, round);
    painter.restore();
}

void drawChevron(QPainter &painter, const QRectF &place, Qt::ArrowType direction, const QColor &ink)
{
    constexpr double reach = 3.5; // Half the width.
    constexpr double tip = 1.7;   // Half the height.
    const double turn = direction == Qt::UpArrow      ? 180
                        : direction == Qt::LeftArrow  ? 90
                        : direction == Qt::RightArrow ? -90
                                                      : 0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.translate(place.center());
    painter.rotate(turn);
    painter.drawPolyline(QPolygonF{{-reach, -tip}, {0, tip}, {reach, -tip}});
    painter.restore();
}

} // namespace tallyfold
