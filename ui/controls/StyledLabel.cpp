#include "ui/controls/StyledLabel.h"

#include "ui/controls/AccessibleRole.h"

#include <QEvent>
#include <QGuiApplication>

namespace tallyfold {

StyledLabel::StyledLabel(TextStyle style, Tone tone, QWidget *parent)
    : QLabel(parent), m_style(style), m_tone(tone)
{
    setTextFormat(Qt::PlainText); // File names are shown here, which may look like markup.
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

void StyledLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    // A change of the application's palette is told to windows; what is in them is told of its own. Taking
    // the same colours once more changes nothing, and ends it.
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
    colours.setColor(QPalette::Text, ink); // Upon a ground of Base, text takes this one.
    setPalette(colours);
}

} // namespace tallyfold
