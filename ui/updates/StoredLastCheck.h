#pragma once

#include "app/UserSettings.h"
#include "ui/updates/LastCheck.h"

#include <QString>

namespace tallyfold {

/// Keeps the time of the last check in the user's settings file, in UTC. What cannot be written is lost.
class StoredLastCheck final : public LastCheck {
public:
    /// In the platform's usual place.
    StoredLastCheck() = default;
    /// In the file at `path`.
    explicit StoredLastCheck(const QString &path);

    [[nodiscard]] std::optional<QDateTime> load() const override;
    void save(const QDateTime &time) override;

private:
    UserSettings m_settings;
};

} // namespace tallyfold
