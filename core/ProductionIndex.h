#pragma once

#include "core/ProductionPlan.h"

#include <QSet>
#include <QString>
#include <QStringList>

/// The two tables that accompany the copies. Pure functions without file access.
namespace tallyfold::ProductionIndex {

/// The header rows.
[[nodiscard]] QStringList indexHeader();
[[nodiscard]] QStringList privilegeLogHeader();

/// The status in the index of a file that never gets a copy; nothing for any other file.
[[nodiscard]] std::optional<QString> skippedStatus(const PlannedFile &file);

/// What the index says of a copy none of whose pages shows its number.
[[nodiscard]] QString coverOnlyStatus();

/// The production index: one row for every file of `plan`, with its numbers and its status. `failures` are
/// the names of the sources whose copy failed; sources with the same name cannot be distinguished.
[[nodiscard]] QString csv(const ProductionPlan &plan, const QSet<QString> &failures);

/// The privilege log template: one row with numbers for every copy that was written.
[[nodiscard]] QString privilegeLog(const ProductionPlan &plan, const QSet<QString> &failures);

} // namespace tallyfold::ProductionIndex
