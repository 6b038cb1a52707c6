#pragma once

#include "ui/Desktop.h"

#include <QObject>

namespace tallyfold {

/// The desktop of the session: its file manager over D-Bus, and its programs for folders and addresses.
class SystemDesktop final : public QObject, public Desktop {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Asks the file manager to show the item in its folder; where none answers, the folder is opened.
    void reveal(const std::filesystem::path &item) override;
    void open(const QUrl &url) override;

private:
    void openFolderOf(const std::filesystem::path &item);
};

} // namespace tallyfold
