#pragma once

#include "core/Preset.h"

#include <array>

namespace tallyfold {

/// The presets that come with the program: standard, confidential, exhibits. Created on first use in the
/// language of the user, with new identifiers at each launch.
[[nodiscard]] const std::array<Preset, 3> &builtInPresets();

} // namespace tallyfold
