#pragma once

#include <QSettings>
#include <QString>

namespace tallyfold {

/// The settings file of the user, which several parts of the program share, each with its own keys. Callers
/// see no errors: settings that cannot be written are lost, and the failure is logged.
class UserSettings final : public QSettings {
public:
    /// The file in the standard location of the platform. System-wide settings are ignored.
    UserSettings();
    /// The file at `path`.
    explicit UserSettings(const QString &path);
    /// Writes pending changes.
    ~UserSettings() override;

protected:
    bool event(QEvent *event) override;

private:
    void logStatus(); ///< Logs once that the file cannot be read or written.

    bool m_isLogged = false;
};

} // namespace tallyfold
