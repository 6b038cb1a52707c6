#pragma once

#include "core/ProductionPlan.h"
#include "core/StampSettings.h"

#include <QString>

#include <functional>
#include <optional>

namespace tallyfold {

/// A warning of the form, with the change of the settings that resolves it.
struct FormWarning {
    QString text;
    QString action; ///< Title of the button that applies it.
    std::function<void(StampSettings &)> mend;
};

/// Numbers that exceed the number of digits.
[[nodiscard]] std::optional<FormWarning> digitsWarning(const ProductionPlan &plan,
                                                       const StampSettings &settings);
/// Earlier numbers that the white box would cover.
[[nodiscard]] std::optional<FormWarning> earlierNumberWarning(const ProductionPlan &plan,
                                                              const StampSettings &settings);
/// Files whose only page is the cover.
[[nodiscard]] std::optional<FormWarning> singlePageWarning(const ProductionPlan &plan,
                                                           const StampSettings &settings);

} // namespace tallyfold
