#pragma once

#include <QSettings>
#include <QString>

namespace tallyfold {

/// The user's settings file, which several parts of the program share, each with keys of its own. Writing
/// never fails towards the caller: what cannot be written is lost,
/// and logged.
class UserSettings final : public QSettings {
public:
    /// In the platform's usual place. What the system's administrator set for all users is not the user's.
    UserSettings();
    /// The file at `path`.
    explicit UserSettings(const QString &path);
    /// Writes what is not written yet.
    ~UserSettings() override;

protected:
    bool event(QEvent *event) override;

private:
    void logStatus(); ///< Of a file that cannot be read or written, once.

    bool m_isLogged = false;
};

} // namespace tallyfold
