#pragma once

#include "core/StampSettings.h"

#include <QString>

#include <cstdint>

namespace tallyfold {

/// Settings with every value inside its limits. Only `StampSettings::normalized()` makes them, so whatever
/// numbers, names or draws by them need not look again.
class NormalizedSettings {
public:
    const StampSettings *operator->() const
    {
        return &m_settings;
    }
    const StampSettings &operator*() const
    {
        return m_settings;
    }
    /// A copy: they are settings like any others.
    operator StampSettings() const
    {
        return m_settings;
    }

    bool operator==(const NormalizedSettings &) const = default;

private:
    friend struct StampSettings;
    explicit NormalizedSettings(StampSettings settings);

    StampSettings m_settings;
};

/// Writes the texts of many pages by the same settings.
class BatesFormatter {
public:
    explicit BatesFormatter(const NormalizedSettings &settings);
    /// As `StampSettings::bates`.
    [[nodiscard]] QString operator()(std::int64_t number) const;

private:
    QString m_prefix;
    QString m_suffix;
    qsizetype m_digits;
};

/// As `StampSettings::pageLabel`.
[[nodiscard]] QString pageLabel(const NormalizedSettings &settings, std::int64_t page, std::int64_t total);

} // namespace tallyfold
