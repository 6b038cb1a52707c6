#pragma once

#include "core/PasswordNotice.h"
#include "core/Production.h"
#include "core/SourceFile.h"

#include <QString>

#include <optional>
#include <vector>

namespace tallyfold {

/// What is said of a reason why a production cannot be written.
[[nodiscard]] QString messageOf(const ProductionConflict &conflict);

/// What is said of the first of `conflicts`; nothing when there are none.
[[nodiscard]] std::optional<QString> firstMessageOf(const std::vector<ProductionConflict> &conflicts);

/// What is said of the folder that has `conflicts`, with what to do; nothing when there are none, and when
/// there is only nothing to stamp, which is not the folder's fault.
[[nodiscard]] std::optional<QString> folderMessageOf(const std::vector<ProductionConflict> &conflicts);

/// What is said of the password-protected files of a plan: at most four by name.
[[nodiscard]] QString messageOf(const PasswordNotice &notice);

/// The question before a production that leaves those files out.
[[nodiscard]] QString confirmationOf(const PasswordNotice &notice);

/// The title of the button that takes them out of the list.
[[nodiscard]] QString removalTitleOf(const PasswordNotice &notice);

/// A word or two on why a source cannot be stamped, and all there is to say about it.
[[nodiscard]] QString shortDescriptionOf(SourceProblem problem);
[[nodiscard]] QString messageOf(SourceProblem problem);

} // namespace tallyfold
