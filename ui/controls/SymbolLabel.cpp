#include "ui/controls/SymbolLabel.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/theme/Spacing.h"

#include <QFontMetrics>
#include <QHBoxLayout>

namespace tallyfold {

SymbolLabel::SymbolLabel(const QString &symbol, Tone symbolTone, TextStyle style, Tone textTone,
                         QWidget *parent)
    : QWidget(parent),
      m_symbol(new SymbolView(symbol, symbolTone, QFontMetrics(fontOf(style)).height(), this)),
      m_text(new StyledLabel(style, textTone, this))
{
    // Keeps the text next to the symbol even if there is more space.
    m_text->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::tight + 2);
    layout->addWidget(m_symbol, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
}

void SymbolLabel::setText(const QString &text)
{
    if (text == m_text->text()) {
        return;
    }
    m_text->setText(text);
    if (m_isAnnounced) {
        announceAgain(*m_text);
    }
}

void SymbolLabel::setAnnounced()
{
    m_isAnnounced = true;
    tallyfold::setAnnounced(*m_text);
}

QString SymbolLabel::text() const
{
    return m_text->text();
}

QString SymbolLabel::symbol() const
{
    return m_symbol->symbol();
}

} // namespace tallyfold
