#pragma once

#include "core/Preset.h"

#include <array>

namespace tallyfold {

/// The presets that come with the program: the standard, a confidential legend, exhibits. Made on first use,
/// in the user's language, with identifiers of their own for each launch.
[[nodiscard]] const std::array<Preset, 3> &builtInPresets();

} // namespace tallyfold
