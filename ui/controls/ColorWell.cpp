#include "ui/controls/ColorWell.h"

#include "ui/text/Words.h"
#include "ui/theme/Tones.h"

#include <QDialogButtonBox>
#include <QPainter>
#include <QPushButton>

namespace tallyfold {

namespace {

constexpr QSize wellSize(56, 26);

QColor opaque(const StampColor &color)
{
    const auto part = [](double value) { return static_cast<float>(qBound(0.0, value, 1.0)); };
    return QColor::fromRgbF(part(color.red), part(color.green), part(color.blue));
}

} // namespace

ColorWell::ColorWell(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, this, &ColorWell::openPanel);
    setDisplayedValue(m_color);
}

const StampColor &ColorWell::color() const
{
    return m_color;
}

void ColorWell::setDisplayedValue(const StampColor &color)
{
    m_color = color;
    setAccessibleDescription(opaque(color).name());
    setToolTip(opaque(color).name());
    update();
}

QColorDialog *ColorWell::panel() const
{
    return m_panel;
}

QSize ColorWell::sizeHint() const
{
    return wellSize;
}

void ColorWell::openPanel()
{
    if (!m_panel) {
        m_panel = new QColorDialog(opaque(m_color), this);
        m_panel->setWindowTitle(accessibleName());
        if (const auto *buttons = m_panel->findChild<QDialogButtonBox *>()) {
            buttons->button(QDialogButtonBox::Ok)->setText(words(QT_TRANSLATE_NOOP("Words", "Select")));
        }
        m_panel->setAttribute(Qt::WA_DeleteOnClose);
        // Every choice takes effect at once; cancelling reverts them all.
        connect(m_panel, &QColorDialog::currentColorChanged, this, &ColorWell::pick);
        connect(m_panel, &QDialog::rejected, this, [this, before = m_color] {
            if (m_color != before) {
                setDisplayedValue(before);
                Q_EMIT picked(before);
            }
        });
    }
    m_panel->show();
    m_panel->raise();
}

void ColorWell::pick(const QColor &color)
{
    const StampColor picked{color.redF(), color.greenF(), color.blueF(), m_color.alpha};
    if (picked != m_color) {
        setDisplayedValue(picked);
        Q_EMIT this->picked(picked);
    }
}

void ColorWell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double inset = hasFocus() ? 1 : 1.5; // Aligns the line with pixels.
    const QRectF frame = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    painter.setPen(hasFocus() ? QPen(colorOf(Tone::accent, palette()), 2)
                              : QPen(colorOf(Tone::edge, palette()), 1));
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawRoundedRect(frame, 6, 6);
    painter.setPen(QPen(colorOf(Tone::edge, palette()), 1));
    painter.setBrush(opaque(m_color));
    painter.drawRoundedRect(frame.adjusted(5, 5, -5, -5), 3, 3);
}

} // namespace tallyfold
