#include "ui/controls/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace tallyfold {

ElidedLabel::ElidedLabel(TextStyle style, Tone tone, QWidget *parent) : StyledLabel(style, tone, parent)
{
    setWordWrap(false);
}

ElidedLabel::ElidedLabel(const QString &text, TextStyle style, Tone tone, QWidget *parent)
    : ElidedLabel(style, tone, parent)
{
    setText(text);
}

QSize ElidedLabel::minimumSizeHint() const
{
    constexpr int fewestCharacters = 8;
    const QSize whole = StyledLabel::minimumSizeHint();
    return {qMin(whole.width(), fewestCharacters * fontMetrics().averageCharWidth()), whole.height()};
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && shownText() != text()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), helpTextOf(text()), this);
        return true;
    }
    return StyledLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          shownText(), foregroundRole());
}

} // namespace tallyfold
