#include "core/Preset.h"

#include "core/Graphemes.h"
#include "core/NormalizedSettings.h"

#include <QHashFunctions>

namespace tallyfold {

Preset Preset::of(const QUuid &id, const QString &name, const StampSettings &settings)
{
    return {id, firstGraphemes(name, maxNameLength), settings.normalized()};
}

std::size_t hashValue(const Preset &preset)
{
    return qHashMulti(0, preset.id, preset.name, hashValue(preset.settings));
}

} // namespace tallyfold
