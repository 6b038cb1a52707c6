#pragma once

#include "ui/list/FileListModel.h"
#include "ui/list/FileRow.h"
#include "ui/list/RowLayout.h"

#include <QHash>
#include <QStyledItemDelegate>

#include <utility>
#include <vector>

namespace tallyfold {

/// Paints the rows of the list. Heights are worked out once for every shape of row, so that thousands of rows
/// cost little.
class FileRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit FileRowDelegate(QObject *parent = nullptr);

    /// The row of `index` laid out in `width`.
    [[nodiscard]] FileRow rowOf(const QModelIndex &index, int width) const;

    /// Adapts to a plan whose rows are `width` wide; whether all heights may be other ones now.
    bool adapt(const ProductionPlan &plan, int width);
    /// Forgets the heights, as the fonts have changed.
    void forgetHeights();

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    int m_width = 0;
    FileRow::RangeRoom m_rangeRoom;
    mutable std::vector<std::pair<RowLayout, int>> m_heights;
};

} // namespace tallyfold
