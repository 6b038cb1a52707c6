#pragma once

#include <QString>
#include <QWidget>

#include <filesystem>
#include <functional>
#include <optional>

namespace tallyfold {

/// Asks over `window` where a report is to be saved, beginning in `folder` with `name`, which has no ending,
/// and waits for the answer. Whether a file may be replaced is asked as well. Nothing when it was cancelled.
using AskForReport = std::function<std::optional<std::filesystem::path>(
    const std::filesystem::path &folder, const QString &name, QWidget *window)>;

/// Asks with a dialog.
[[nodiscard]] std::optional<std::filesystem::path> askForReport(const std::filesystem::path &folder,
                                                                const QString &name, QWidget *window);

} // namespace tallyfold
