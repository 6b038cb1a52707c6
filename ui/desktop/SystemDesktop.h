#pragma once

#include "ui/Desktop.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace tallyfold {

/// The desktop of the session: its file manager over D-Bus, and its programs for folders and addresses.
class SystemDesktop final : public QObject, public Desktop {
    Q_OBJECT
public:
    /// Opens a folder, a page or a message in the program for it.
    using Opener = std::function<void(const QUrl &)>;

    /// That of the session that the program runs in.
    SystemDesktop();
    /// With the file manager that is on `bus`, and programs started by `opener`.
    SystemDesktop(const QDBusConnection &bus, Opener opener);

    /// Asks the file manager to show the item in its folder; where none answers, the folder is opened.
    void reveal(const std::filesystem::path &item) override;
    void open(const QUrl &url) override;

private:
    void openFolderOf(const std::filesystem::path &item);

    QDBusConnection m_bus;
    Opener m_opener;
};

} // namespace tallyfold
