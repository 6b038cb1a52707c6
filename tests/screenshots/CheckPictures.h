#pragma once

#include <QWidget>

#include <filesystem>
#include <functional>

namespace tallyfold::tests {

/// Writes a picture of a window under a name.
using Shoot = std::function<void(QWidget &window, const char *name)>;

/// Shows the window in which productions are checked in all its states, `size` large. What it needs is
/// written into `folder`.
void shootCheck(const std::filesystem::path &folder, QSize size, const Shoot &shoot);

} // namespace tallyfold::tests
