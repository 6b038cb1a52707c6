#pragma once

#include "core/Preset.h"

#include <QUuid>

#include <optional>
#include <vector>

namespace tallyfold {

/// A preset that was removed from a list, with its position.
struct DeletedPreset {
    Preset preset;
    std::vector<QUuid> before; ///< The presets before it, in the order of the list.
};

/// Removes the preset `id` from `presets`; nothing if it is not there.
[[nodiscard]] std::optional<DeletedPreset> takeFrom(std::vector<Preset> &presets, const QUuid &id);

/// Reinserts `deleted` into `presets`: after the last remaining preset of those before it, at the front if
/// none remains.
void putBack(std::vector<Preset> &presets, const DeletedPreset &deleted);

} // namespace tallyfold
