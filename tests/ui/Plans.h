#pragma once

#include "core/ProductionPlan.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace tallyfold::tests {

/// A source as classifying would give it.
inline SourceFile source(const QString &name, std::int64_t pages,
                         std::optional<SourceProblem> problem = std::nullopt,
                         std::optional<QString> existingBates = std::nullopt)
{
    return {QUuid::createUuid(), name.toStdString(), name, pages, distantPast(), problem, existingBates};
}

/// The only row of a plan of one source.
inline PlannedFile planned(const SourceFile &file, const StampSettings &settings = {})
{
    return ProductionPlan({file}, settings).files.front();
}

} // namespace tallyfold::tests
