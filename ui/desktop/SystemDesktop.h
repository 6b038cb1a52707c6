#pragma once

#include "ui/Desktop.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace tallyfold {

/// The desktop of the session: its file manager over D-Bus, and its default applications.
class SystemDesktop final : public QObject, public Desktop {
    Q_OBJECT
public:
    /// Opens a folder, a page or a message in its default application.
    using Opener = std::function<void(const QUrl &)>;

    /// The desktop of the current session.
    SystemDesktop();
    /// With the file manager on `bus`, and applications started by `opener`.
    SystemDesktop(const QDBusConnection &bus, Opener opener);

    /// Asks the file manager to show the item in its folder; without an answer, opens the folder.
    void reveal(const std::filesystem::path &item) override;
    void open(const QUrl &url) override;

private:
    void openFolderOf(const std::filesystem::path &item);

    QDBusConnection m_bus;
    Opener m_opener;
};

} // namespace tallyfold
