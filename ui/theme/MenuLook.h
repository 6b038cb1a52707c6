#pragma once

#include <QPainter>
#include <QStyleOption>

namespace tallyfold {

/// The ground of a menu, with its edge.
void drawMenuPanel(QPainter &painter, const QStyleOption &option);

/// The ground of an entry of a menu that is pointed to; and the entry as it is to be drawn upon it, by a
/// style that knows of no such ground.
[[nodiscard]] QStyleOptionMenuItem drawMenuGround(QPainter &painter, const QStyleOptionMenuItem &entry);

/// The ground of a menu's title in the bar, where it is pointed to or open.
void drawMenuTitleGround(QPainter &painter, const QStyleOptionMenuItem &title);

/// The ground of a help text, with its edge.
void drawHelpPanel(QPainter &painter, const QStyleOption &option);

/// The frame of what the tabs of `option` stand over.
void drawTabFrame(QPainter &painter, const QStyleOption &option);

/// The shape of one tab.
void drawTab(QPainter &painter, const QStyleOptionTab &tab);

} // namespace tallyfold
