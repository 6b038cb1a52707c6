#include "ui/controls/SectionTitle.h"

#include "ui/theme/Spacing.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/Typography.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace tallyfold {

namespace {

int discOf(const QFont &digits)
{
    return QFontMetrics(digits).height() + spacing::tight;
}

} // namespace

SectionTitle::SectionTitle(std::int64_t number, const QString &title, QWidget *parent)
    : QAbstractButton(parent), m_number(number), m_title(title)
{
    setCheckable(true);
    setChecked(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(QStringLiteral("%1 %2").arg(QString::number(number), title));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

std::int64_t SectionTitle::number() const
{
    return m_number;
}

QString SectionTitle::title() const
{
    return m_title;
}

QSize SectionTitle::sizeHint() const
{
    const int disc = discOf(fontOf(TextStyle::captionStrong));
    const QFontMetrics metrics(fontOf(TextStyle::headline));
    return {disc + metrics.horizontalAdvance(m_title) + 4 * spacing::normal + metrics.height(),
            qMax(disc, metrics.height()) + spacing::normal};
}

void SectionTitle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFont digits = fontOf(TextStyle::captionStrong);
    const int disc = discOf(digits);
    const QRect circle =
        QStyle::visualRect(layoutDirection(), rect(), QRect(0, (height() - disc) / 2, disc, disc));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorOf(Tone::accent, palette()));
    painter.drawEllipse(circle);
    painter.setFont(digits);
    painter.setPen(colorOf(Tone::onAccent, palette()));
    painter.drawText(circle, Qt::AlignCenter, QString::number(m_number));

    const int arrow = QFontMetrics(fontOf(TextStyle::headline)).height();
    const QRect text = QStyle::visualRect(
        layoutDirection(), rect(),
        QRect(disc + spacing::normal, 0, width() - disc - arrow - 2 * spacing::normal, height()));
    painter.setFont(fontOf(TextStyle::headline));
    painter.setPen(colorOf(Tone::text, palette()));
    painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeading,
                     painter.fontMetrics().elidedText(m_title, Qt::ElideRight, text.width()));

    const QRect place =
        QStyle::visualRect(layoutDirection(), rect(),
                           QRect(width() - arrow - spacing::tight, (height() - arrow) / 2, arrow, arrow));
    symbolIcon(isChecked() ? QStringLiteral("chevron.down") : QStringLiteral("chevron.right"),
               underMouse() ? Tone::text : Tone::secondary)
        .paint(&painter, place.adjusted(1, 1, -1, -1));
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void SectionTitle::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void SectionTitle::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

} // namespace tallyfold
