#pragma once

#include "app/Panels.h"

#include <QList>
#include <QUrl>
#include <QWidget>

#include <filesystem>
#include <functional>
#include <optional>

namespace tallyfold {

/// Asks for what `panel` asks for, in the desktop's own dialog over `window`, beginning in `folder`, and
/// waits for the answer. An empty list when it was cancelled; nothing, and nobody is asked, where the desktop
/// brings no dialog.
using AskDesktop = std::function<std::optional<QList<QUrl>>(
    const OpenPanel &panel, const std::filesystem::path &folder, QWidget *window)>;

/// Asks the desktop that the program runs on.
[[nodiscard]] std::optional<QList<QUrl>> askDesktop(const OpenPanel &panel,
                                                    const std::filesystem::path &folder, QWidget *window);

} // namespace tallyfold
