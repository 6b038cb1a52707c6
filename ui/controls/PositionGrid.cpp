#include "ui/controls/PositionGrid.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/controls/StyledLabel.h"
#include "ui/text/Titles.h"
#include "ui/theme/Spacing.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QRadioButton>

namespace tallyfold {

namespace {

constexpr QSize pageSize(96, 72);
constexpr QSize spotSize(26, 18);
constexpr QSize markSize(18, 8);

/// The outline of the page.
class Page final : public QWidget {
public:
    Page()
    {
        setFixedSize(pageSize);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colorOf(Tone::secondary, palette()), 1));
        painter.setBrush(palette().color(QPalette::Base));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    }
};

/// The button of a position: a mark, filled with the accent colour if selected.
class Spot final : public QRadioButton {
public:
    Spot()
    {
        setFixedSize(spotSize);
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
    }

protected:
    [[nodiscard]] bool hitButton(const QPoint &point) const override
    {
        return rect().contains(point);
    }

    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QRectF mark(QPointF(0, 0), markSize);
        mark.moveCenter(QRectF(rect()).center());
        QColor fill = colorOf(isChecked() ? Tone::accent : Tone::secondary, palette());
        if (!isChecked()) {
            fill.setAlphaF(underMouse() ? 0.95F : 0.8F);
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawRoundedRect(mark, 3, 3);
        if (hasFocus()) {
            painter.setPen(QPen(colorOf(Tone::accent, palette()), 1.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(mark.adjusted(-3, -3, 3, 3), 5, 5);
        }
    }
};

} // namespace

PositionGrid::PositionGrid(const QString &name, QWidget *parent)
    : QWidget(parent), m_title(new StyledLabel(TextStyle::body, Tone::secondary))
{
    auto *page = new Page;
    auto *grid = new QGridLayout(page);
    grid->setContentsMargins(spacing::tight, spacing::tight, spacing::tight, spacing::tight);
    grid->setSpacing(0);
    grid->setRowStretch(1, 1); // The rows are at the edges of the page.
    auto *group = new QButtonGroup(this);
    for (qsizetype row = 0; row < rows().size(); ++row) {
        m_spots.append(QList<QAbstractButton *>());
        for (qsizetype column = 0; column < rows()[row].size(); ++column) {
            const StampPosition position = rows()[row][column];
            auto *button = new Spot;
            button->installEventFilter(this);
            button->setAccessibleName(titleOf(position));
            button->setToolTip(titleOf(position));
            group->addButton(button);
            grid->addWidget(button, static_cast<int>(row) * 2, static_cast<int>(column), Qt::AlignCenter);
            connect(button, &QAbstractButton::clicked, this, [this, position] { choose(position); });
            m_spots.last().append(button);
        }
    }
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::wide);
    layout->addWidget(page);
    layout->addWidget(m_title, 1);
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(name);
    setSelection(m_selection);
}

const QList<QList<StampPosition>> &PositionGrid::rows()
{
    static const QList<QList<StampPosition>> rows{
        {StampPosition::topLeft, StampPosition::topCenter, StampPosition::topRight},
        {StampPosition::bottomLeft, StampPosition::bottomCenter, StampPosition::bottomRight}};
    return rows;
}

StampPosition PositionGrid::selection() const
{
    return m_selection;
}

void PositionGrid::setSelection(StampPosition position)
{
    m_selection = position;
    for (const StampPosition other : allStampPositions) {
        QAbstractButton *button = spot(other);
        // Tab moves to the selected button, as in any exclusive group; arrow keys move from there.
        button->setFocusPolicy(other == position ? Qt::StrongFocus : Qt::ClickFocus);
        button->setChecked(other == position);
    }
    m_title->setText(titleOf(position));
}

QAbstractButton *PositionGrid::spot(StampPosition position) const
{
    for (qsizetype row = 0; row < rows().size(); ++row) {
        const qsizetype column = rows()[row].indexOf(position);
        if (column >= 0) {
            return m_spots[row][column];
        }
    }
    return m_spots.first().first();
}

void PositionGrid::choose(StampPosition position)
{
    setSelection(position);
    Q_EMIT selected(position);
}

bool PositionGrid::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(object, event);
    }
    const int key = static_cast<QKeyEvent *>(event)->key();
    const qsizetype row = rows()[0].contains(m_selection) ? 0 : 1;
    const qsizetype column = rows()[row].indexOf(m_selection);
    qsizetype nextRow = row;
    qsizetype nextColumn = column;
    switch (key) {
    case Qt::Key_Left:
        nextColumn = qMax<qsizetype>(0, column - 1);
        break;
    case Qt::Key_Right:
        nextColumn = qMin<qsizetype>(rows()[row].size() - 1, column + 1);
        break;
    case Qt::Key_Up:
        nextRow = 0;
        break;
    case Qt::Key_Down:
        nextRow = 1;
        break;
    default:
        return QWidget::eventFilter(object, event);
    }
    const StampPosition next = rows()[nextRow][nextColumn];
    if (next != m_selection) {
        choose(next);
    }
    spot(next)->setFocus(Qt::TabFocusReason);
    return true;
}

} // namespace tallyfold
