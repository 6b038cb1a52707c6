#pragma once

#include "ui/Environment.h"

namespace tallyfold {

/// Puts the settings of `preset` in the place of the current ones, and lets it be taken back: a preset
/// replaces every setting of the form, and is easily chosen by mistake.
void applyUndoably(const Environment &environment, const Preset &preset);

} // namespace tallyfold
