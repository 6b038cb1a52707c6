#pragma once

#include "core/check/Finding.h"
#include "core/check/ProductionFolder.h"

#include <cstddef>
#include <functional>
#include <stop_token>
#include <vector>

namespace tallyfold::check {

/// Reads a copy that is there, of the folder with the index `folder`, and holds its pages against what the
/// index tells of it. `pageDone` is called for each page. Nothing more is found once a stop is requested.
[[nodiscard]] std::vector<Finding> checkCopy(const ProductionFolder::Copy &copy, std::size_t folder,
                                             const std::function<void()> &pageDone,
                                             const std::stop_token &givenUp);

} // namespace tallyfold::check
