#include "ui/controls/StyledLabel.h"

#include "ui/controls/AccessibleRole.h"

#include <QEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace tallyfold {

StyledLabel::StyledLabel(TextStyle style, Tone tone, QWidget *parent)
    : QLabel(parent), m_style(style), m_tone(tone)
{
    setTextFormat(Qt::PlainText); // File names may look like markup.
    setWordWrap(true);
    if (style == TextStyle::largeTitle || style == TextStyle::title) {
        setAccessibleRole(*this, QAccessible::Heading);
    }
    dress();
}

StyledLabel::StyledLabel(const QString &text, TextStyle style, Tone tone, QWidget *parent)
    : StyledLabel(style, tone, parent)
{
    setText(text);
}

void StyledLabel::setTabularDigits()
{
    m_hasTabularDigits = true;
    dress();
}

void StyledLabel::setSelectable()
{
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

QSize StyledLabel::sizeHint() const
{
    constexpr int mostCharacters = 80;
    const QSize hint = QLabel::sizeHint();
    const int most = mostCharacters * fontMetrics().averageCharWidth();
    if (hint.width() <= most) {
        return hint;
    }
    return {most, wordWrap() ? heightForWidth(most) : hint.height()};
}

QSize StyledLabel::minimumSizeHint() const
{
    constexpr int mostCharacters = 18;
    const QSize hint = QLabel::minimumSizeHint();
    return {wordWrap() ? qMin(hint.width(), mostCharacters * fontMetrics().averageCharWidth()) : hint.width(),
            hint.height()};
}

bool StyledLabel::haveWordsRoom(int width) const
{
    return !wordWrap() || QLabel::minimumSizeHint().width() <= width;
}

WrappedText StyledLabel::brokenText(int width) const
{
    return {text(), font(), width, alignment(), layoutDirection()};
}

int StyledLabel::heightForWidth(int width) const
{
    if (haveWordsRoom(width)) {
        return QLabel::heightForWidth(width);
    }
    const QMargins margins = contentsMargins();
    return brokenText(width - margins.left() - margins.right()).height() + margins.top() + margins.bottom();
}

bool StyledLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && !toolTip().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), helpTextOf(toolTip()), this);
        return true;
    }
    return QLabel::event(event);
}

void StyledLabel::paintEvent(QPaintEvent *event)
{
    if (haveWordsRoom(width()) || hasSelectedText()) { // Only QLabel can paint the selection.
        QLabel::paintEvent(event);
        return;
    }
    const QRect room = contentsRect();
    const WrappedText broken = brokenText(room.width());
    const int top = alignment().testFlag(Qt::AlignTop) ? 0 : qMax(0, (room.height() - broken.height()) / 2);
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    broken.draw(painter, room.topLeft() + QPoint(0, top));
}

void StyledLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    // ApplicationPaletteChange reaches windows, PaletteChange their children. Setting equal colours again
    // sends no event, so that this does not recurse.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationFontChange) {
        dress();
    }
}

void StyledLabel::dress()
{
    const QFont font = fontOf(m_style);
    setFont(m_hasTabularDigits ? withTabularDigits(font) : font);
    QPalette colours;
    const QColor ink = colorOf(m_tone, QGuiApplication::palette());
    colours.setColor(QPalette::WindowText, ink);
    colours.setColor(QPalette::Text, ink); // For text on the Base role.
    setPalette(colours);
}

} // namespace tallyfold
