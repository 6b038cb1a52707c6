#pragma once

#include "core/FileError.h"
#include "core/Production.h"

#include <QString>

#include <filesystem>
#include <optional>
#include <vector>

namespace tallyfold {

/// The name the program shows of itself.
[[nodiscard]] QString displayedName();

/// What is said about the names in `conflicts` that exist in the output folder already; nothing when there
/// are none.
[[nodiscard]] std::optional<QString> existingFilesMessage(const std::vector<ProductionConflict> &conflicts);

/// What is said when the check before a run finds something.
[[nodiscard]] QString nothingWrittenMessage();

/// What is said when a file of the same name turned up between check and run.
[[nodiscard]] QString conflictsDuringRunMessage(const std::vector<ProductionConflict> &conflicts);

/// What is said when a run fails as a whole.
[[nodiscard]] QString failedRunMessage(const FileError &error);
/// The same for a failure that has only a description.
[[nodiscard]] QString failedRunMessage(const QString &description);

/// What is said when nothing that was added is a PDF.
[[nodiscard]] QString noPdfsMessage();

/// What is said when `folders`, of which there are some, could not be searched to their end.
[[nodiscard]] QString unreadableFoldersMessage(const std::vector<std::filesystem::path> &folders);

} // namespace tallyfold
