#include "ui/controls/SectionTitle.h"

#include "ui/controls/WrappedText.h"
#include "ui/theme/Spacing.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/Typography.h"

#include <QAccessibleWidget>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <memory>

namespace tallyfold {

namespace {

int discOf(const QFont &digits)
{
    return QFontMetrics(digits).height() + spacing::tight;
}

/// A heading that opens and closes what is under it, to those who do not see it. Its number is an ornament.
class SpokenTitle final : public QAccessibleWidget {
public:
    explicit SpokenTitle(SectionTitle *title) : QAccessibleWidget(title, QAccessible::Heading) {}

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        const bool isOpen = button().isChecked();
        state.expandable = true;
        state.expanded = isOpen;
        state.collapsed = !isOpen;
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &action) override
    {
        if (action == pressAction()) {
            button().click();
        } else {
            QAccessibleWidget::doAction(action);
        }
    }

private:
    [[nodiscard]] QAbstractButton &button() const
    {
        return *qobject_cast<QAbstractButton *>(widget());
    }
};

QAccessibleInterface *spoken(const QString &, QObject *object)
{
    auto *title = qobject_cast<SectionTitle *>(object);
    // QAccessible takes ownership.
    return title ? std::make_unique<SpokenTitle>(title).release() : nullptr;
}

} // namespace

SectionTitle::SectionTitle(std::int64_t number, const QString &title, QWidget *parent)
    : QAbstractButton(parent), m_number(number), m_title(title)
{
    QAccessible::installFactory(spoken); // Before the first event; Qt ignores repeated installation.
    setCheckable(true);
    setChecked(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(title);
    connect(this, &QAbstractButton::toggled, this, [this] {
        QAccessible::State changed;
        changed.expanded = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    });
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    connect(this, &QAbstractButton::toggled, this, &SectionTitle::tellSign);
}

std::int64_t SectionTitle::number() const
{
    return m_number;
}

QString SectionTitle::title() const
{
    return m_title;
}

void SectionTitle::setSign(const std::optional<SectionSign> &sign)
{
    if (sign != m_sign) {
        m_sign = sign;
        tellSign();
    }
}

std::optional<SectionSign> SectionTitle::shownSign() const
{
    return isChecked() ? std::nullopt : m_sign;
}

void SectionTitle::tellSign()
{
    const QString text = shownSign() ? shownSign()->text : QString();
    setAccessibleDescription(text);
    setToolTip(text.isEmpty() ? QString() : helpTextOf(text));
    update();
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
        QRect(disc + spacing::normal, 0, width() - disc - 2 * arrow - 3 * spacing::normal, height()));
    painter.setFont(fontOf(TextStyle::headline));
    painter.setPen(colorOf(Tone::text, palette()));
    painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeading,
                     painter.fontMetrics().elidedText(m_title, Qt::ElideRight, text.width()));

    const QRect atEnd(width() - arrow - spacing::tight, (height() - arrow) / 2, arrow, arrow);
    if (const std::optional<SectionSign> sign = shownSign()) {
        symbolIcon(sign->symbol, sign->tone)
            .paint(&painter, QStyle::visualRect(layoutDirection(), rect(),
                                                atEnd.translated(-arrow - spacing::normal, 0)));
    }
    const QRect place = QStyle::visualRect(layoutDirection(), rect(), atEnd);
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
