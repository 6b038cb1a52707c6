#pragma once

#include <QUrl>

#include <filesystem>

namespace tallyfold {

/// What the desktop does for us outside of our windows.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Shows a file or folder, chosen in its folder, in the desktop's file manager.
    virtual void reveal(const std::filesystem::path &item) = 0;
    /// Opens a web page, or begins a message.
    virtual void open(const QUrl &url) = 0;
};

} // namespace tallyfold
