#pragma once

#include "core/check/Finding.h"
#include "core/check/ProductionFolder.h"

#include <cstddef>
#include <vector>

namespace tallyfold::check {

/// Where page 1 of no copy of a production shows its number, that is told once, as covers, and not of every
/// copy. `findings` are those of each of its copies, in their order; a copy that could not be read tells
/// nothing of covers.
void tellCoversOnce(const ProductionFolder &production, std::size_t folder,
                    std::vector<std::vector<Finding>> &findings, std::vector<Finding> &ofProduction);

} // namespace tallyfold::check
