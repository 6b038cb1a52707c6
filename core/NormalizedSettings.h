#pragma once

#include "core/StampSettings.h"

#include <QString>

#include <cstdint>

namespace tallyfold {

/// Settings with every value within its limits. Only `StampSettings::normalized()` creates them, so code that
/// numbers, names or draws need not check them again.
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
    /// A copy as ordinary settings.
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

/// Formats the Bates numbers of many pages with the same settings.
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
