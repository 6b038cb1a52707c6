#include "ui/controls/SymbolView.h"

#include "ui/theme/Symbols.h"

#include <QPainter>

namespace tallyfold {

SymbolView::SymbolView(const QString &symbol, Tone tone, int size, QWidget *parent)
    : QWidget(parent), m_symbol(symbol), m_tone(tone), m_size(size)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SymbolView::sizeHint() const
{
    return {m_size, m_size};
}

QString SymbolView::symbol() const
{
    return m_symbol;
}

void SymbolView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    symbolIcon(m_symbol, m_tone).paint(&painter, rect());
}

} // namespace tallyfold
