#include "ui/controls/WrappedText.h"

#include <QTextOption>

#include <cmath>

namespace tallyfold {

WrappedText::WrappedText(const QString &text, const QFont &font, int width, Qt::Alignment alignment,
                         Qt::LayoutDirection direction)
{
    QString lines = text;
    lines.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
    m_layout.setText(lines);
    m_layout.setFont(font);
    QTextOption option(alignment & Qt::AlignHorizontal_Mask);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(direction);
    m_layout.setTextOption(option);
    m_layout.beginLayout();
    for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, m_height));
        m_height += line.height();
    }
    m_layout.endLayout();
}

int WrappedText::height() const
{
    return static_cast<int>(std::ceil(m_height));
}

void WrappedText::draw(QPainter &painter, QPoint place) const
{
    m_layout.draw(&painter, place);
}

QString helpTextOf(const QString &text)
{
    constexpr int longestRun = 40; // Characters without a break opportunity.
    QString broken;
    int run = 0;
    for (const QChar letter : text) {
        // Neither within a surrogate pair nor before a combining character.
        const bool mayBreak = !letter.isLowSurrogate() && !letter.isMark();
        if (run >= longestRun && mayBreak) {
            broken += QChar(0x200B); // A zero width space.
            run = 0;
        }
        run = letter.isSpace() ? 0 : run + 1;
        broken += letter;
    }
    return QStringLiteral("<span>%1</span>").arg(broken.toHtmlEscaped());
}

} // namespace tallyfold
