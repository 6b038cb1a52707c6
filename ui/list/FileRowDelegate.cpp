#include "ui/list/FileRowDelegate.h"

#include "ui/controls/WrappedText.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QToolTip>

#include <algorithm>

namespace tallyfold {

namespace {

/// Rows may bear so many different earlier numbers that remembering each would cost more than it saves.
constexpr std::size_t mostHeights = 64;

} // namespace

FileRowDelegate::FileRowDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

FileRow FileRowDelegate::rowOf(const QModelIndex &index, int width) const
{
    const auto *model = qobject_cast<const FileListModel *>(index.model());
    return {model->file(index), model->plan().settings, width, m_rangeRoom};
}

bool FileRowDelegate::adapt(const ProductionPlan &plan, int width)
{
    const FileRow::RangeRoom rangeRoom = FileRow::rangeRoomFor(plan, width);
    if (width == m_width && rangeRoom == m_rangeRoom) {
        return false;
    }
    m_width = width;
    m_rangeRoom = rangeRoom;
    m_heights.clear();
    return true;
}

void FileRowDelegate::forgetHeights()
{
    m_heights.clear();
}

void FileRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    const FileRow::Look look{option.palette, option.state.testFlag(QStyle::State_Selected),
                             option.state.testFlag(QStyle::State_Active) && option.widget->hasFocus(),
                             option.direction};
    rowOf(index, option.rect.width()).paint(*painter, option.rect.topLeft(), look);
    if (option.state.testFlag(QStyle::State_HasFocus) && !look.isSelected) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.rect = option.rect.adjusted(5, 2, -5, -2);
        option.widget->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
    }
}

QSize FileRowDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const
{
    const RowLayout shape = RowLayout::of(qobject_cast<const FileListModel *>(index.model())->file(index));
    const auto known = std::find_if(m_heights.begin(), m_heights.end(),
                                    [&shape](const auto &entry) { return entry.first == shape; });
    if (known != m_heights.end()) {
        return {0, known->second};
    }
    const int height = rowOf(index, m_width).height();
    if (m_heights.size() < mostHeights) {
        m_heights.emplace_back(shape, height);
    }
    return {0, height};
}

bool FileRowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                                const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const QString help = rowOf(index, option.rect.width()).helpAt(event->pos() - option.rect.topLeft());
    QToolTip::showText(event->globalPos(), helpTextOf(help), view);
    return true;
}

} // namespace tallyfold
