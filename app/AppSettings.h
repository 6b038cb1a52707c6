#pragma once

#include "core/Preset.h"
#include "core/StampSettings.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace tallyfold {

/// Everything that is remembered between launches. The fields stand in the order in which they are stored.
struct AppSettings {
    bool onboardingDone = false; ///< The welcome sheet was dismissed once.
    StampSettings stamp;
    bool writeIndex = true;
    bool writePrivilegeLog = false;
    std::vector<Preset> presets; ///< The user's own, in the order in which they were saved.

    /// The settings of a first launch, with the texts in the user's language.
    [[nodiscard]] static AppSettings defaults();

    bool operator==(const AppSettings &) const = default;
};

/// The settings that the JSON document `bytes` holds. A key that is missing or null gives the field's
/// default. Nothing when it is no such document, or one of its five values is of another type: inside of
/// stamp settings and presets reading is tolerant key by key.
[[nodiscard]] std::optional<AppSettings> decodeAppSettings(const QByteArray &bytes);

/// `settings` as a compact JSON document. Nothing when a number in it is not finite.
[[nodiscard]] std::optional<QByteArray> encode(const AppSettings &settings);

} // namespace tallyfold
