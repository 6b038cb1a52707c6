#pragma once

#include <QAbstractTableModel>
#include <QDateTime>
#include <QFileIconProvider>
#include <QString>

#include <cstdint>
#include <filesystem>
#include <vector>

namespace tallyfold {

/// What of a folder can be chosen: its folders and its PDFs, hidden ones left out. Names are bytes, and those
/// that are not valid text are there as well.
class FolderContents final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { nameColumn, sizeColumn, modifiedColumn, columns };

    explicit FolderContents(QObject *parent = nullptr);

    /// Lists `folder`. False when it cannot be read; then the list stays as it was.
    bool open(const std::filesystem::path &folder);

    [[nodiscard]] const std::filesystem::path &folder() const;
    [[nodiscard]] std::filesystem::path pathOf(const QModelIndex &index) const;
    [[nodiscard]] bool isFolder(const QModelIndex &index) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    struct Entry {
        std::filesystem::path path;
        QString name;
        bool isFolder = false;
        std::int64_t bytes = 0;
        QDateTime modified;
    };

    void arrange();

    std::filesystem::path m_folder;
    std::vector<Entry> m_entries;
    int m_sortColumn = nameColumn;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    QFileIconProvider m_icons;
};

} // namespace tallyfold
