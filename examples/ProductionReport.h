#pragma once

#include "core/Production.h"
#include "core/ProductionPlan.h"
#include "core/SourceFile.h"

#include <QJsonArray>
#include <QJsonObject>

#include <vector>

/// What `produce` prints: the core's values as JSON, files by their names.
namespace tallyfold::ProductionReport {

[[nodiscard]] QJsonObject of(const ProductionResult &result);
[[nodiscard]] QJsonObject of(const ProductionError &error);
[[nodiscard]] QJsonObject of(const ProductionPlan &plan);
[[nodiscard]] QJsonArray of(const std::vector<SourceFile> &sources);

} // namespace tallyfold::ProductionReport
