#pragma once

#include "app/CheckModel.h"

#include <QAbstractTableModel>

#include <memory>

namespace tallyfold {

/// The findings of a check as rows of a table, in their order.
class FindingsModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { folderColumn, fileColumn, pageColumn, whatColumn, columns };
    /// What rows are sorted and filtered by, as numbers.
    enum Role { sortRole = Qt::UserRole, kindRole };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows those of `result`; null for none.
    void setResult(std::shared_ptr<const CheckResult> result);
    [[nodiscard]] const check::Finding &finding(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QString textAt(const QModelIndex &index) const;
    [[nodiscard]] qlonglong orderAt(const QModelIndex &index) const;

    std::shared_ptr<const CheckResult> m_result;
};

} // namespace tallyfold
