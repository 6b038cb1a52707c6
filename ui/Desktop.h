#pragma once

#include <QUrl>

#include <filesystem>

namespace tallyfold {

/// Services of the desktop outside the windows of the program.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Shows a file or folder in the file manager, selected in its parent folder.
    virtual void reveal(const std::filesystem::path &item) = 0;
    /// Opens a web page, or composes a message.
    virtual void open(const QUrl &url) = 0;
};

} // namespace tallyfold
