#pragma once

#include "core/PasswordNotice.h"
#include "core/Production.h"
#include "core/SourceFile.h"

#include <QString>

#include <optional>
#include <vector>

namespace tallyfold {

/// The message for a reason why a production cannot be written.
[[nodiscard]] QString messageOf(const ProductionConflict &conflict);

/// The message for the first of `conflicts`; nothing if there are none.
[[nodiscard]] std::optional<QString> firstMessageOf(const std::vector<ProductionConflict> &conflicts);

/// The message about the folder with `conflicts`, with what to do; nothing if there are none, or if there
/// only is nothing to stamp, which does not concern the folder.
[[nodiscard]] std::optional<QString> folderMessageOf(const std::vector<ProductionConflict> &conflicts);

/// The message about the password-protected files of a plan; names at most four.
[[nodiscard]] QString messageOf(const PasswordNotice &notice);

/// The question before a production that omits those files.
[[nodiscard]] QString confirmationOf(const PasswordNotice &notice);

/// The title of the button that removes them from the list.
[[nodiscard]] QString removalTitleOf(const PasswordNotice &notice);

/// A short and a long text on why a source cannot be stamped.
[[nodiscard]] QString shortDescriptionOf(SourceProblem problem);
[[nodiscard]] QString messageOf(SourceProblem problem);

} // namespace tallyfold
