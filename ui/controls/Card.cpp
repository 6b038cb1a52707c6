#include "ui/controls/Card.h"

#include "ui/controls/StyledLabel.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>
#include <QPainter>

namespace tallyfold {

namespace {

constexpr double radius = 8;

StyledLabel *nameOf(QWidget *control, const QString &label)
{
    auto *name = new StyledLabel(label, TextStyle::body);
    name->setBuddy(control);
    if (control->accessibleName().isEmpty()) {
        control->setAccessibleName(label);
    }
    return name;
}

} // namespace

Card::Card(QWidget *parent) : QWidget(parent), m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
}

QWidget *Card::addRow(const QString &label, QWidget *control)
{
    auto *content = new QHBoxLayout;
    content->setSpacing(spacing::wide);
    content->addWidget(nameOf(control, label), 1);
    // Expanding controls get the larger share; others are aligned to the end of the row.
    const bool grows = control->sizePolicy().horizontalPolicy() & QSizePolicy::ExpandFlag;
    content->addWidget(control, grows ? 2 : 0);
    return add(content);
}

QWidget *Card::addStacked(const QString &label, QWidget *control)
{
    auto *content = new QVBoxLayout;
    content->setSpacing(spacing::tight);
    content->addWidget(nameOf(control, label));
    content->addWidget(control);
    return add(content);
}

QWidget *Card::addWide(QWidget *control)
{
    auto *content = new QVBoxLayout;
    content->addWidget(control);
    return add(content);
}

QWidget *Card::add(QLayout *content)
{
    auto *row = new QWidget(this);
    content->setContentsMargins(spacing::wide, spacing::normal, spacing::wide, spacing::normal);
    row->setLayout(content);
    m_layout->addWidget(row);
    m_rows.append(row);
    return row;
}

void Card::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colorOf(Tone::border, palette()), 1));
    painter.setBrush(colorOf(Tone::card, palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    bool isFirst = true;
    for (const QWidget *row : m_rows) {
        if (!row->isVisibleTo(this)) {
            continue;
        }
        if (!isFirst) {
            const double y = row->y() + 0.5;
            painter.drawLine(QPointF(spacing::wide, y), QPointF(width() - 1, y));
        }
        isFirst = false;
    }
}

} // namespace tallyfold
