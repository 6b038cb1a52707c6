#pragma once

#include "app/UserSettings.h"

#include <QByteArray>
#include <QString>

namespace tallyfold {

/// What the windows remember of themselves between launches: places and sizes, and which sections are open.
/// It is not part of the settings, and losing it loses nothing.
class WindowState {
public:
    /// In the user's settings file.
    WindowState() = default;
    /// In the file at `path`.
    explicit WindowState(const QString &path);

    /// What was remembered under `key`; empty for nothing.
    [[nodiscard]] QByteArray bytes(const QString &key) const;
    void setBytes(const QString &key, const QByteArray &bytes);

    [[nodiscard]] bool flag(const QString &key, bool otherwise) const;
    void setFlag(const QString &key, bool value);

private:
    UserSettings m_settings;
};

} // namespace tallyfold
