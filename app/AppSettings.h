#pragma once

#include "core/Preset.h"
#include "core/StampSettings.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace tallyfold {

/// Everything that is kept between launches. The members are in the order in which they are stored.
struct AppSettings {
    bool onboardingDone = false; ///< The welcome sheet was dismissed once.
    StampSettings stamp;
    bool writeIndex = true;
    bool writePrivilegeLog = false;
    std::vector<Preset> presets; ///< Presets of the user, in the order in which they were saved.

    /// The settings at the first launch, with texts in the language of the user.
    [[nodiscard]] static AppSettings defaults();

    bool operator==(const AppSettings &) const = default;
};

/// The settings in the JSON document `bytes`. A key that is missing or null gives the default of the field.
/// Nothing if it is not such a document or one of its five values has the wrong type; within stamp settings
/// and presets, invalid keys are ignored one by one.
[[nodiscard]] std::optional<AppSettings> decodeAppSettings(const QByteArray &bytes);

/// `settings` as a compact JSON document. Nothing if a number is not finite.
[[nodiscard]] std::optional<QByteArray> encode(const AppSettings &settings);

} // namespace tallyfold
