#pragma once

#include "core/ProductionPlan.h"

#include <QSet>
#include <QString>
#include <QStringList>

/// The two tables that go beside the copies. Pure functions: nothing is read or written here.
namespace tallyfold::ProductionIndex {

/// The header rows.
[[nodiscard]] QStringList indexHeader();
[[nodiscard]] QStringList privilegeLogHeader();

/// What the index says of a file that gets no copy, however the production goes; nothing for any other.
[[nodiscard]] std::optional<QString> skippedStatus(const PlannedFile &file);

/// What the index says of a copy none of whose pages shows its number.
[[nodiscard]] QString coverOnlyStatus();

/// The production index: one row for every file of `plan`, with its numbers and what became of it. `failures`
/// are the names of the sources whose copy failed; sources of the same name are told apart by neither.
[[nodiscard]] QString csv(const ProductionPlan &plan, const QSet<QString> &failures);

/// The privilege log template: one row for every copy that was written, its numbers filled in.
[[nodiscard]] QString privilegeLog(const ProductionPlan &plan, const QSet<QString> &failures);

} // namespace tallyfold::ProductionIndex
