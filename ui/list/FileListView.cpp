#include "ui/list/FileListView.h"

#include "app/UriList.h"
#include "ui/text/Titles.h"
#include "ui/text/Words.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStringList>
#include <QStyleOptionFocusRect>
#include <QToolTip>

#include <memory>
#include <utility>

namespace tallyfold {

namespace {

/// The link of a row as a button for the keyboard. The row paints its text, in the ink that is seen upon its
/// ground; this only says whether it has the focus.
class RowLink final : public QPushButton {
public:
    RowLink(const QString &title, QWidget *parent) : QPushButton(title, parent)
    {
        setFlat(true);
        setCursor(Qt::PointingHandCursor);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (hasFocus()) {
            QPainter painter(this);
            QStyleOptionFocusRect focus;
            focus.initFrom(this);
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
        }
    }
};

} // namespace

FileListView::FileListView(FileListModel &model, QWidget *parent)
    : QListView(parent),
      m_model(&model),
      m_delegate(new FileRowDelegate(this)),
      m_link(new RowLink(FileRow::linkTitle(), viewport()))
{
    setModel(&model);
    setItemDelegate(m_delegate);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    verticalScrollBar()->setSingleStep(24);
    m_link->hide();
    connect(m_link, &QPushButton::clicked, this, &FileListView::passwordHelpWanted);
    connect(&model, &QAbstractItemModel::modelReset, this, &FileListView::adapt);
}

QSet<QUuid> FileListView::selectedIds() const
{
    QSet<QUuid> ids;
    for (const QModelIndex &index : selectionModel()->selectedIndexes()) {
        ids.insert(m_model->file(index).source.id);
    }
    return ids;
}

void FileListView::showSelected(const QSet<QUuid> &ids)
{
    if (ids == selectedIds()) {
        return;
    }
    const QScopedValueRollback showing(m_isShowing, true);
    QItemSelection selection;
    int first = -1;
    for (int row = 0; row <= m_model->rowCount(); ++row) {
        const bool isSelected =
            row < m_model->rowCount() && ids.contains(m_model->file(m_model->index(row)).source.id);
        if (isSelected && first < 0) {
            first = row;
        } else if (!isSelected && first >= 0) { // Neighbours are one range.
            selection.select(m_model->index(first), m_model->index(row - 1));
            first = -1;
        }
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

QPushButton *FileListView::link() const
{
    return m_link;
}

void FileListView::copy()
{
    std::vector<std::filesystem::path> paths;
    QStringList names;
    QModelIndexList indexes = selectionModel()->selectedIndexes();
    std::sort(indexes.begin(), indexes.end());
    for (const QModelIndex &index : indexes) {
        paths.push_back(m_model->file(index).source.url);
        names.append(m_model->file(index).source.name);
    }
    if (paths.empty()) {
        return;
    }
    auto files = std::make_unique<QMimeData>();
    files->setText(names.join(QLatin1Char('\n')));
    files->setData(QStringLiteral("text/uri-list"), uriListOf(paths));
    QGuiApplication::clipboard()->setMimeData(files.release()); // The clipboard takes it over.
}

void FileListView::paste()
{
    const QMimeData *files = QGuiApplication::clipboard()->mimeData();
    if (files && files->hasFormat(QStringLiteral("text/uri-list"))) {
        Q_EMIT pasted(localPathsIn(files->data(QStringLiteral("text/uri-list"))));
    }
}

void FileListView::dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles)
{
    const bool areHeightsOther = m_delegate->adapt(m_model->plan(), viewport()->width());
    if (areHeightsOther || roles.isEmpty() || roles.contains(Qt::SizeHintRole)) {
        QListView::dataChanged(first, last, roles);
    } else {
        viewport()->update(); // Laying out all rows anew would give what there is.
    }
    placeLink();
}

void FileListView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QListView::selectionChanged(selected, deselected);
    if (!m_isShowing) {
        Q_EMIT chosen();
    }
}

void FileListView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListView::currentChanged(current, previous);
    placeLink();
}

void FileListView::updateGeometries()
{
    QListView::updateGeometries();
    placeLink();
}

void FileListView::adapt()
{
    if (m_delegate->adapt(m_model->plan(), viewport()->width())) {
        scheduleDelayedItemsLayout();
    }
}

void FileListView::resizeEvent(QResizeEvent *event)
{
    adapt();
    QListView::resizeEvent(event);
}

void FileListView::changeEvent(QEvent *event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange) {
        m_delegate->forgetHeights();
        scheduleDelayedItemsLayout();
    }
}

void FileListView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && isOnLink(event->pos())) {
        Q_EMIT passwordHelpWanted();
        return;
    }
    QListView::mousePressEvent(event);
}

void FileListView::mouseMoveEvent(QMouseEvent *event)
{
    viewport()->setCursor(isOnLink(event->pos()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (!m_isDragRefused) { // Else the rows on the way would be chosen.
        QListView::mouseMoveEvent(event);
    }
}

void FileListView::mouseReleaseEvent(QMouseEvent *event)
{
    QListView::mouseReleaseEvent(event);
    if (std::exchange(m_isDragRefused, false)) { // The button's release has hidden it.
        tellHowToMove(currentIndex());
    }
}

void FileListView::scrollContentsBy(int dx, int dy)
{
    QListView::scrollContentsBy(dx, dy);
    placeLink();
}

void FileListView::startDrag(Qt::DropActions supportedActions)
{
    if (!m_model->canMoveRows()) {
        m_isDragRefused = true;
        tellHowToMove(currentIndex());
        return;
    }
    // The model moves the rows itself when they are dropped: nothing is left to be taken out afterwards.
    QListView::startDrag(supportedActions);
    viewport()->update();
}

void FileListView::tellHowToMove(const QModelIndex &index)
{
    const QRect row = visualRect(index);
    const QPoint beside = viewport()->mapToGlobal(row.isValid() ? row.center() : rect().center());
    QToolTip::showText(
        beside,
        words(QT_TRANSLATE_NOOP("Words", "To move files, choose “%1” under “%2”."))
            .arg(titleOf(FileOrder::manual), words(QT_TRANSLATE_NOOP("Words", "Cover pages and order"))),
        viewport());
}

bool FileListView::isOnLink(QPoint point) const
{
    const QModelIndex index = indexAt(point);
    if (!index.isValid()) {
        return false;
    }
    const QRect row = visualRect(index);
    const QRect link = m_delegate->rowOf(index, row.width()).link();
    return !link.isNull() &&
           QStyle::visualRect(layoutDirection(), row, link.translated(row.topLeft())).contains(point);
}

void FileListView::placeLink()
{
    const QModelIndex index = currentIndex();
    if (!index.isValid() || index.row() >= m_model->rowCount()) {
        m_link->hide();
        return;
    }
    const QRect row = visualRect(index);
    const QRect link = m_delegate->rowOf(index, row.width()).link();
    m_link->setVisible(!link.isNull());
    if (!link.isNull()) {
        m_link->setGeometry(QStyle::visualRect(layoutDirection(), row, link.translated(row.topLeft())));
        m_link->setAccessibleDescription(m_model->file(index).source.name);
    }
}

} // namespace tallyfold
