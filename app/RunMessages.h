#pragma once

#include "core/FileError.h"
#include "core/Production.h"

#include <QString>

#include <filesystem>
#include <optional>
#include <vector>

namespace tallyfold {

/// The name of the program as shown to users.
[[nodiscard]] QString displayedName();

/// The message about names in `conflicts` that already exist in the output folder; nothing if there are none.
[[nodiscard]] std::optional<QString> existingFilesMessage(const std::vector<ProductionConflict> &conflicts);

/// The message if the check before a run finds conflicts.
[[nodiscard]] QString nothingWrittenMessage();

/// The message if a file with the name of a copy appeared between check and run.
[[nodiscard]] QString conflictsDuringRunMessage(const std::vector<ProductionConflict> &conflicts);

/// The message if a run fails as a whole.
[[nodiscard]] QString failedRunMessage(const FileError &error);
/// As above for a failure that only has a description.
[[nodiscard]] QString failedRunMessage(const QString &description);

/// The message if none of the added files is a PDF.
[[nodiscard]] QString noPdfsMessage();

/// The message if `folders`, which must not be empty, could not be searched completely.
[[nodiscard]] QString unreadableFoldersMessage(const std::vector<std::filesystem::path> &folders);

} // namespace tallyfold
