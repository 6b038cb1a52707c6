// The settings and presets of the model.

#include "app/AppModel.h"
#include "app/BuiltInPresets.h"
#include "app/DeletedPreset.h"
#include "app/ListChange.h"
#include "app/PresetChange.h"
#include "core/OuterSpaces.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace tallyfold {

const AppSettings &AppModel::settings() const
{
    return m_settings;
}

void AppModel::setSettings(const AppSettings &settings)
{
    if (settings == m_settings) {
        return;
    }
    const bool isOtherStamp = settings.stamp != m_settings.stamp;
    m_settings = settings;
    m_store->save(m_settings);
    Q_EMIT settingsChanged();
    if (isOtherStamp) {
        refreshPreviews();
    }
}

void AppModel::setStamp(const StampSettings &stamp)
{
    AppSettings settings = m_settings;
    settings.stamp = stamp;
    setSettings(settings);
}

const std::array<Preset, 3> &AppModel::builtInPresets()
{
    return tallyfold::builtInPresets();
}

void AppModel::savePreset(const QString &name)
{
    const QString trimmed = withoutOuterSpaces(name);
    if (trimmed.isEmpty()) {
        return;
    }
    const Preset saved = Preset::of(QUuid::createUuid(), trimmed, m_settings.stamp);
    std::vector<Preset> presets = m_settings.presets;
    // Compared in its stored form, which truncates long names.
    std::erase_if(presets, [&saved](const Preset &preset) { return preset.name == saved.name; });
    presets.push_back(saved);
    setPresets(presets);
}

void AppModel::applyPreset(const Preset &preset)
{
    setStamp(preset.settings);
}

void AppModel::applyPresetUndoably(const Preset &preset)
{
    const StampSettings before = m_settings.stamp;
    applyPreset(preset);
    if (m_settings.stamp == before || !m_undoManager) {
        return;
    }
    // The stack may outlive the model and keeps its commands.
    const QPointer<AppModel> model(this);
    const PresetChange::Settings settings{
        [model] { return model ? model->settings().stamp : StampSettings(); },
        [model](const StampSettings &stamp) {
            if (model) {
                model->setStamp(stamp);
            }
        }};
    auto change =
        std::make_unique<PresetChange>(tr("Apply Preset"), settings, before, m_settings.stamp, m_series);
    m_undoManager->push(change.release()); // The stack takes ownership.
}

void AppModel::forgetStepsOfEarlierSeries()
{
    const auto isOver = [this](int step) {
        // Null before the first and after the last command.
        const auto *change = dynamic_cast<const PresetChange *>(m_undoManager->command(step));
        return change && change->isOver();
    };
    if (!m_undoManager) {
        return;
    }
    // An obsolete command only removes itself from the stack.
    while (isOver(m_undoManager->index() - 1)) {
        m_undoManager->undo();
    }
    while (isOver(m_undoManager->index())) {
        m_undoManager->redo();
    }
}

void AppModel::deletePreset(const QUuid &id)
{
    auto deleted = std::make_shared<std::optional<DeletedPreset>>();
    std::vector<Preset> presets = m_settings.presets;
    *deleted = takeFrom(presets, id);
    if (!*deleted) {
        return;
    }
    setPresets(presets);
    registerUndo(tr("Delete Preset"), [this, id, deleted] {
        std::vector<Preset> changed = m_settings.presets;
        if (*deleted) {
            putBack(changed, **deleted);
            deleted->reset();
        } else {
            *deleted = takeFrom(changed, id); // Nothing if it was replaced meanwhile.
        }
        setPresets(changed);
    });
}

void AppModel::setPresets(const std::vector<Preset> &presets)
{
    AppSettings settings = m_settings;
    settings.presets = presets;
    setSettings(settings);
}

void AppModel::registerUndo(const QString &actionName, std::function<void()> swap)
{
    if (!m_undoManager) {
        return;
    }
    // The stack may outlive the model and keeps its commands.
    const QPointer<AppModel> model(this);
    auto change = std::make_unique<ListChange>(actionName, [model, swap = std::move(swap)] {
        if (model) {
            swap();
        }
    });
    m_undoManager->push(change.release()); // The stack takes ownership.
}

} // namespace tallyfold
