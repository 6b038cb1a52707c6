#include "ui/panels/FolderContents.h"

#include "core/NaturalOrder.h"
#include "core/PdfEnding.h"
#include "core/SourceFile.h"
#include "ui/controls/WrappedText.h"
#include "ui/text/Words.h"

#include <QLocale>

#include <algorithm>
#include <chrono>
#include <system_error>

namespace tallyfold {

namespace {

bool isHidden(const std::filesystem::path &path)
{
    return path.filename().native().starts_with('.');
}

QDateTime modificationOf(const std::filesystem::directory_entry &entry)
{
    std::error_code error;
    const auto time = entry.last_write_time(error);
    if (error) {
        return {};
    }
    const auto system = std::chrono::file_clock::to_sys(time);
    return QDateTime::fromMSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::milliseconds>(system.time_since_epoch()).count());
}

} // namespace

FolderContents::FolderContents(QObject *parent) : QAbstractTableModel(parent) {}

bool FolderContents::open(const std::filesystem::path &folder)
{
    std::error_code error;
    std::filesystem::directory_iterator iterator(folder, error);
    if (error) {
        return false;
    }
    std::vector<Entry> entries;
    for (; !error && iterator != std::filesystem::directory_iterator(); iterator.increment(error)) {
        const std::filesystem::directory_entry &entry = *iterator;
        std::error_code unknown; // What cannot be looked at is no folder, and may still be a PDF by its name.
        const bool isFolder = entry.is_directory(unknown);
        if (isHidden(entry.path()) || (!isFolder && !hasPdfEnding(entry.path().native()))) {
            continue;
        }
        const auto bytes = isFolder ? 0 : static_cast<std::int64_t>(entry.file_size(unknown));
        entries.push_back(
            {entry.path(), displayName(entry.path()), isFolder, unknown ? 0 : bytes, modificationOf(entry)});
    }
    beginResetModel();
    m_folder = folder;
    m_entries = std::move(entries);
    arrange();
    endResetModel();
    return true;
}

const std::filesystem::path &FolderContents::folder() const
{
    return m_folder;
}

std::filesystem::path FolderContents::pathOf(const QModelIndex &index) const
{
    return m_entries.at(static_cast<std::size_t>(index.row())).path;
}

bool FolderContents::isFolder(const QModelIndex &index) const
{
    return m_entries.at(static_cast<std::size_t>(index.row())).isFolder;
}

int FolderContents::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int FolderContents::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant FolderContents::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const Entry &entry = m_entries.at(static_cast<std::size_t>(index.row()));
    if (role == Qt::DecorationRole && index.column() == nameColumn) {
        return m_icons.icon(entry.isFolder ? QFileIconProvider::Folder : QFileIconProvider::File);
    }
    if (role == Qt::TextAlignmentRole && index.column() == sizeColumn) {
        return QVariant::fromValue(Qt::AlignTrailing | Qt::AlignVCenter);
    }
    if (role == Qt::ToolTipRole && index.column() == nameColumn) {
        return helpTextOf(entry.name);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (index.column()) {
    case nameColumn:
        return entry.name;
    case sizeColumn:
        return entry.isFolder ? QString()
                              : QLocale().formattedDataSize(entry.bytes, 1, QLocale::DataSizeSIFormat);
    case modifiedColumn:
        return QLocale().toString(entry.modified, QLocale::ShortFormat);
    default:
        return {};
    }
}

QVariant FolderContents::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case nameColumn:
        return words(QT_TRANSLATE_NOOP("Words", "Name"));
    case sizeColumn:
        return words(QT_TRANSLATE_NOOP("Words", "Size"));
    case modifiedColumn:
        return words(QT_TRANSLATE_NOOP("Words", "Modified"));
    default:
        return {};
    }
}

void FolderContents::sort(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_sortOrder = order;
    beginResetModel();
    arrange();
    endResetModel();
}

void FolderContents::arrange()
{
    std::vector<QString> names;
    names.reserve(m_entries.size());
    for (const Entry &entry : m_entries) {
        names.push_back(entry.name);
    }
    std::vector<Entry> sorted;
    sorted.reserve(m_entries.size());
    for (const std::size_t place : NaturalOrder().sorted(names)) {
        sorted.push_back(std::move(m_entries[place]));
    }
    if (m_sortColumn == sizeColumn) {
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const Entry &one, const Entry &other) { return one.bytes < other.bytes; });
    } else if (m_sortColumn == modifiedColumn) {
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const Entry &one, const Entry &other) { return one.modified < other.modified; });
    }
    if (m_sortOrder == Qt::DescendingOrder) {
        std::reverse(sorted.begin(), sorted.end());
    }
    std::stable_partition(sorted.begin(), sorted.end(), [](const Entry &entry) { return entry.isFolder; });
    m_entries = std::move(sorted);
}

} // namespace tallyfold
