#include "app/DeletedPreset.h"

#include <algorithm>

namespace tallyfold {

std::optional<DeletedPreset> takeFrom(std::vector<Preset> &presets, const QUuid &id)
{
    const auto found = std::find_if(presets.begin(), presets.end(),
                                    [&id](const Preset &candidate) { return candidate.id == id; });
    if (found == presets.end()) {
        return std::nullopt;
    }
    DeletedPreset deleted{*found, {}};
    for (auto before = presets.begin(); before != found; ++before) {
        deleted.before.push_back(before->id);
    }
    presets.erase(found);
    return deleted;
}

void putBack(std::vector<Preset> &presets, const DeletedPreset &deleted)
{
    const auto last = std::find_if(presets.rbegin(), presets.rend(), [&deleted](const Preset &preset) {
        return std::find(deleted.before.begin(), deleted.before.end(), preset.id) != deleted.before.end();
    });
    presets.insert(last.base(), deleted.preset);
}

} // namespace tallyfold
