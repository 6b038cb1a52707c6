#pragma once

#include "core/Preset.h"

#include <QUuid>

#include <optional>
#include <vector>

namespace tallyfold {

/// A preset that was taken out of a list, and which it stood behind.
struct DeletedPreset {
    Preset preset;
    std::vector<QUuid> before; ///< In the order of the list.
};

/// Takes the preset `id` out of `presets`; nothing when it is not among them.
[[nodiscard]] std::optional<DeletedPreset> takeFrom(std::vector<Preset> &presets, const QUuid &id);

/// Puts `deleted` back into `presets`: behind the last of those that it stood behind, in front where none of
/// them is left.
void putBack(std::vector<Preset> &presets, const DeletedPreset &deleted);

} // namespace tallyfold
