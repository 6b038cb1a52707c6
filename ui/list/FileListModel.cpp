#include "ui/list/FileListModel.h"

#include "ui/list/RowLayout.h"
#include "ui/text/RowText.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <memory>
#include <utility>

namespace tallyfold {

namespace {

const QString rowsFormat = QStringLiteral("application/x-tallyfold-rows");

bool haveSameSources(const ProductionPlan &one, const ProductionPlan &other)
{
    return std::equal(one.files.begin(), one.files.end(), other.files.begin(), other.files.end(),
                      [](const PlannedFile &file, const PlannedFile &otherFile) {
                          return file.source.id == otherFile.source.id;
                      });
}

bool haveSameShapes(const ProductionPlan &one, const ProductionPlan &other)
{
    return std::equal(one.files.begin(), one.files.end(), other.files.begin(), other.files.end(),
                      [](const PlannedFile &file, const PlannedFile &otherFile) {
                          return RowLayout::of(file) == RowLayout::of(otherFile);
                      });
}

} // namespace

FileListModel::FileListModel(Move move, QObject *parent)
    : QAbstractListModel(parent),
      m_move(std::move(move)),
      m_plan(std::make_shared<const ProductionPlan>(std::vector<SourceFile>(), StampSettings()))
{
}

bool FileListModel::canMoveRows() const
{
    return m_plan->settings->order == FileOrder::manual;
}

bool FileListModel::setPlan(const std::shared_ptr<const ProductionPlan> &plan)
{
    if (!haveSameSources(*m_plan, *plan)) {
        beginResetModel();
        m_plan = plan;
        endResetModel();
        return false;
    }
    // Most changes are of the numbers alone: the rows are painted anew, and need not be laid out.
    QList<int> roles{Qt::DisplayRole, Qt::AccessibleTextRole};
    if (!haveSameShapes(*m_plan, *plan)) {
        roles.append(Qt::SizeHintRole);
    }
    m_plan = plan;
    if (rowCount() > 0) {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), roles);
    }
    return true;
}

const ProductionPlan &FileListModel::plan() const
{
    return *m_plan;
}

const PlannedFile &FileListModel::file(const QModelIndex &index) const
{
    return m_plan->files.at(static_cast<std::size_t>(index.row()));
}

QModelIndex FileListModel::indexOf(const QUuid &id) const
{
    const auto found = std::find_if(m_plan->files.begin(), m_plan->files.end(),
                                    [&id](const PlannedFile &file) { return file.source.id == id; });
    return found == m_plan->files.end() ? QModelIndex()
                                        : index(static_cast<int>(found - m_plan->files.begin()));
}

int FileListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_plan->files.size());
}

QVariant FileListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return file(index).source.name;
    case Qt::AccessibleTextRole:
        return rowTextOf(file(index), m_plan->settings).spoken();
    default:
        return {};
    }
}

Qt::ItemFlags FileListModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractListModel::flags(index) & ~Qt::ItemIsDropEnabled;
    return index.isValid() ? flags | Qt::ItemIsDragEnabled : flags | Qt::ItemIsDropEnabled;
}

Qt::DropActions FileListModel::supportedDropActions() const
{
    return Qt::MoveAction;
}

QStringList FileListModel::mimeTypes() const
{
    return {rowsFormat};
}

QMimeData *FileListModel::mimeData(const QModelIndexList &indexes) const
{
    QByteArray rows;
    QDataStream stream(&rows, QIODevice::WriteOnly);
    for (const QModelIndex &index : indexes) {
        stream << static_cast<qint64>(index.row());
    }
    auto data = std::make_unique<QMimeData>();
    data->setData(rowsFormat, rows);
    return data.release(); // The drag takes it over.
}

std::set<std::int64_t> FileListModel::rowsIn(const QMimeData &data)
{
    std::set<std::int64_t> rows;
    QDataStream stream(data.data(rowsFormat));
    while (!stream.atEnd()) {
        qint64 row = -1;
        stream >> row;
        rows.insert(row);
    }
    return rows;
}

bool FileListModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int,
                                 const QModelIndex &parent)
{
    const std::set<std::int64_t> rows = rowsIn(*data);
    if (action != Qt::MoveAction || rows.empty() || !canMoveRows()) {
        return false;
    }
    m_move(rows, row >= 0 ? row : parent.isValid() ? parent.row() : rowCount());
    // The rows have moved already; a view that believed the drop would take out those that came.
    return false;
}

} // namespace tallyfold
