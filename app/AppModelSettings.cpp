// The settings and presets of the model.

#include "app/AppModel.h"
#include "app/BuiltInPresets.h"
#include "app/ListChange.h"
#include "core/OuterSpaces.h"

#include <algorithm>
#include <memory>
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
    AppSettings settings = m_settings;
    std::erase_if(settings.presets, [&trimmed](const Preset &preset) { return preset.name == trimmed; });
    settings.presets.push_back(Preset::of(QUuid::createUuid(), trimmed, settings.stamp));
    setSettings(settings);
}

void AppModel::applyPreset(const Preset &preset)
{
    setStamp(preset.settings);
}

void AppModel::deletePreset(const QUuid &id)
{
    const auto preset = std::find_if(m_settings.presets.begin(), m_settings.presets.end(),
                                     [&id](const Preset &candidate) { return candidate.id == id; });
    if (preset == m_settings.presets.end()) {
        return;
    }
    auto before = std::make_shared<std::vector<Preset>>(m_settings.presets);
    AppSettings settings = m_settings;
    settings.presets.erase(settings.presets.begin() + (preset - m_settings.presets.begin()));
    setSettings(settings);
    registerUndo(tr("Delete Preset"), [this, before] { restorePresets(*before); });
}

void AppModel::restorePresets(std::vector<Preset> &presets)
{
    AppSettings settings = m_settings;
    std::swap(settings.presets, presets);
    setSettings(settings);
}

void AppModel::registerUndo(const QString &actionName, std::function<void()> swap)
{
    if (!m_undoManager) {
        return;
    }
    // The stack may outlive the model, and keeps its steps.
    const QPointer<AppModel> model(this);
    auto change = std::make_unique<ListChange>(actionName, [model, swap = std::move(swap)] {
        if (model) {
            swap();
        }
    });
    m_undoManager->push(change.release()); // The stack owns it from here on.
}

} // namespace tallyfold
