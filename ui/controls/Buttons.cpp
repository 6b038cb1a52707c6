#include "ui/controls/Buttons.h"

#include "ui/theme/Spacing.h"
#include "ui/theme/Tones.h"
#include "ui/theme/Typography.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>

namespace tallyfold {

namespace {

constexpr int symbolGap = spacing::tight + 2;

} // namespace

ProminentButton::ProminentButton(const QString &title, QWidget *parent) : QPushButton(title, parent)
{
    setFont(fontOf(TextStyle::headline));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

QSize ProminentButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int symbol = icon().isNull() ? 0 : iconSize().width() + symbolGap;
    return {qMax(90, metrics.horizontalAdvance(text()) + symbol + 2 * spacing::section + 2),
            metrics.height() + 2 * spacing::normal};
}

QSize ProminentButton::minimumSizeHint() const
{
    return sizeHint();
}

void ProminentButton::paintEvent(QPaintEvent *)
{
    // Painted here because not all styles fill a button with the colour of the palette.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = colorOf(Tone::accent, palette());
    if (!isEnabled()) {
        fill.setAlphaF(0.4F);
    } else if (isDown()) {
        fill = fill.darker(120);
    } else if (underMouse()) {
        fill = fill.lighter(108);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 7, 7);
    const QColor ink = colorOf(Tone::onAccent, palette());
    if (hasFocus()) {
        painter.setPen(QPen(ink, 1.2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(3.5, 3.5, -3.5, -3.5), 5, 5);
    }
    painter.setPen(ink);
    painter.setFont(font());
    const int symbol = icon().isNull() ? 0 : iconSize().width() + symbolGap;
    const QRect content = rect().adjusted(spacing::wide, 0, -spacing::wide, 0);
    // One more than the advance, which is rounded, so that the text is not clipped.
    const int textWidth = qMin(painter.fontMetrics().horizontalAdvance(text()) + 1, content.width() - symbol);
    int left = content.left() + (content.width() - textWidth - symbol) / 2;
    if (symbol > 0) {
        const QRect place(QPoint(left, (height() - iconSize().height()) / 2), iconSize());
        icon().paint(&painter, place);
        left += symbol;
    }
    painter.drawText(QRect(left, 0, textWidth + 1, height()), Qt::AlignVCenter | Qt::TextShowMnemonic,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, textWidth));
}

SmallButton::SmallButton(const QString &title, QWidget *parent) : QPushButton(title, parent)
{
    setFont(fontOf(TextStyle::callout));
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

LinkButton::LinkButton(const QString &title, QWidget *parent) : QPushButton(title, parent)
{
    setFlat(true);
    setFont(fontOf(TextStyle::callout));
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 4, metrics.height() + 2};
}

void LinkButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(true);
    painter.setFont(underlined);
    painter.setPen(palette().color(QPalette::Link));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeading,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, width()));
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

} // namespace tallyfold
