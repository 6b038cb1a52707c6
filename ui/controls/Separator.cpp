#include "ui/controls/Separator.h"

#include "ui/theme/Tones.h"

#include <QPainter>

namespace tallyfold {

Separator::Separator(QWidget *parent) : QWidget(parent)
{
    setFixedHeight(1);
}

void Separator::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), colorOf(Tone::border, palette()));
}

} // namespace tallyfold
