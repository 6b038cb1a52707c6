#pragma once

#include "core/check/Finding.h"

#include <QString>

#include <cstddef>
#include <filesystem>
#include <span>

namespace tallyfold {

/// Numbers from `first` to `last`, such as "ABC000001 – ABC000120"; one of them where they are the same.
[[nodiscard]] QString numberRange(const QString &first, const QString &last);

/// What was found, in one sentence. `folders` are those that were checked.
[[nodiscard]] QString findingText(const check::Finding &finding,
                                  std::span<const std::filesystem::path> folders);

/// The kind of a finding: those of one kind have one title.
using FindingKind = std::size_t;
[[nodiscard]] FindingKind kindOf(const check::Finding &finding);
/// What findings of the kind of `finding` are called together.
[[nodiscard]] QString kindTitle(const check::Finding &finding);

/// Whether it is about a copy that an index names.
[[nodiscard]] bool isOfCopy(const check::Finding &finding);
/// Whether there is a page to be looked at where `finding` is.
[[nodiscard]] bool hasPage(const check::Finding &finding);

/// The name of a folder as text: its last component, or all of a path that has none.
[[nodiscard]] QString folderName(const std::filesystem::path &folder);

} // namespace tallyfold
