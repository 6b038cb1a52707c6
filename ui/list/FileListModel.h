#pragma once

#include "core/ProductionPlan.h"

#include <QAbstractListModel>
#include <QMimeData>
#include <QUuid>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace tallyfold {

/// The files of a plan as rows, in production order.
class FileListModel final : public QAbstractListModel {
    Q_OBJECT
public:
    /// Moves the rows at places to before the row at another place.
    using Move = std::function<void(const std::set<std::int64_t> &from, std::int64_t to)>;

    explicit FileListModel(Move move, QObject *parent = nullptr);

    /// Whether the user sets the order; else the rows stand as the plan orders them, and none can be moved.
    [[nodiscard]] bool canMoveRows() const;

    /// Shows `plan`. False when its rows are other files, or the same in another order: then the model is
    /// reset.
    bool setPlan(const std::shared_ptr<const ProductionPlan> &plan);

    [[nodiscard]] const ProductionPlan &plan() const;
    /// The file of a row of this model.
    [[nodiscard]] const PlannedFile &file(const QModelIndex &index) const;
    /// Where the file is; nothing when it is not in the plan.
    [[nodiscard]] QModelIndex indexOf(const QUuid &id) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

    [[nodiscard]] Qt::DropActions supportedDropActions() const override;
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

    /// The rows that `data` carries, when they are dragged within this list.
    [[nodiscard]] static std::set<std::int64_t> rowsIn(const QMimeData &data);

private:
    Move m_move;
    std::shared_ptr<const ProductionPlan> m_plan;
};

} // namespace tallyfold
