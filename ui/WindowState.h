#pragma once

#include "app/UserSettings.h"

#include <QByteArray>
#include <QString>

namespace tallyfold {

/// The state of the windows kept between launches: geometry and open sections. Separate from the settings; it
/// may be lost without harm.
class WindowState {
public:
    /// The state in the user's settings file.
    WindowState() = default;
    /// The state in the file at `path`.
    explicit WindowState(const QString &path);

    /// The value stored under `key`; empty if there is none.
    [[nodiscard]] QByteArray bytes(const QString &key) const;
    void setBytes(const QString &key, const QByteArray &bytes);

    [[nodiscard]] bool flag(const QString &key, bool otherwise) const;
    void setFlag(const QString &key, bool value);

private:
    UserSettings m_settings;
};

} // namespace tallyfold
