#include "ui/theme/MenuLook.h"

#include "ui/theme/Boxes.h"
#include "ui/theme/Tones.h"

#include <QStyle>

namespace tallyfold {

namespace {

constexpr double radius = 5;

/// Fills the whole rectangle, since a menu is a window of its own.
void drawPanel(QPainter &painter, const QStyleOption &option, const QColor &ground)
{
    painter.fillRect(option.rect, colorOf(Tone::edge, option.palette));
    painter.fillRect(option.rect.adjusted(1, 1, -1, -1), ground);
}

} // namespace

void drawMenuPanel(QPainter &painter, const QStyleOption &option)
{
    drawPanel(painter, option, option.palette.color(QPalette::Base));
}

QStyleOptionMenuItem drawMenuGround(QPainter &painter, const QStyleOptionMenuItem &entry)
{
    QStyleOptionMenuItem plain(entry);
    const bool isPointedTo =
        entry.state.testFlag(QStyle::State_Selected) && entry.state.testFlag(QStyle::State_Enabled);
    plain.state.setFlag(QStyle::State_Selected, false);
    if (isPointedTo) {
        drawBox(painter, QRectF(entry.rect).adjusted(3, 1, -3, -1), colorOf(Tone::accent, entry.palette),
                QPen(Qt::NoPen), radius);
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
            plain.palette.setColor(role, colorOf(Tone::onAccent, entry.palette));
        }
    }
    return plain;
}

void drawMenuTitleGround(QPainter &painter, const QStyleOptionMenuItem &title)
{
    if (title.state.testFlag(QStyle::State_Selected)) {
        drawBox(painter, QRectF(title.rect).adjusted(1, 1, -1, -2),
                faded(title.palette.color(QPalette::WindowText), 0.1F), QPen(Qt::NoPen), radius);
    }
}

void drawHelpPanel(QPainter &painter, const QStyleOption &option)
{
    drawPanel(painter, option, option.palette.color(QPalette::ToolTipBase));
}

void drawTabFrame(QPainter &painter, const QStyleOption &option)
{
    drawBox(painter, option.rect, Qt::transparent, QPen(colorOf(Tone::border, option.palette), 1), radius);
}

void drawTab(QPainter &painter, const QStyleOptionTab &tab)
{
    const bool isChosen = tab.state.testFlag(QStyle::State_Selected);
    if (isChosen || tab.state.testFlag(QStyle::State_MouseOver)) {
        drawBox(painter, QRectF(tab.rect).adjusted(2, 2, -2, -4),
                faded(tab.palette.color(QPalette::WindowText), isChosen ? 0.08F : 0.04F), QPen(Qt::NoPen),
                radius);
    }
    if (isChosen) {
        drawBox(painter, QRectF(tab.rect.left() + 8, tab.rect.bottom() - 2, tab.rect.width() - 16, 2),
                colorOf(Tone::accent, tab.palette), QPen(Qt::NoPen), 1);
    }
}

} // namespace tallyfold
