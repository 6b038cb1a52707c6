#pragma once

#include <QPainter>
#include <QStyleOption>

namespace tallyfold {

/// The background of a menu, with its border.
void drawMenuPanel(QPainter &painter, const QStyleOption &option);

/// The background of a highlighted menu entry, and the option with which the base style draws the entry on
/// it.
[[nodiscard]] QStyleOptionMenuItem drawMenuGround(QPainter &painter, const QStyleOptionMenuItem &entry);

/// The background of a menu title in the menu bar while it is highlighted or open.
void drawMenuTitleGround(QPainter &painter, const QStyleOptionMenuItem &title);

/// The background of a tooltip, with its border.
void drawHelpPanel(QPainter &painter, const QStyleOption &option);

/// The frame of the tab widget with `option`.
void drawTabFrame(QPainter &painter, const QStyleOption &option);

/// The shape of one tab.
void drawTab(QPainter &painter, const QStyleOptionTab &tab);

} // namespace tallyfold
