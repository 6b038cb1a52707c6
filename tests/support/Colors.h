#pragma once

#include "tests/support/Picture.h"

namespace tallyfold::tests {

/// Colours that no renderer mistakes for one another.
inline constexpr Color black{0, 0, 0};
inline constexpr Color red{255, 0, 0};
inline constexpr Color green{0, 255, 0};
inline constexpr Color blue{0, 0, 255};
inline constexpr Color yellow{255, 255, 0};

} // namespace tallyfold::tests
