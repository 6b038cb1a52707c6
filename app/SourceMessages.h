#pragma once

#include "app/KnownSources.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace tallyfold {

/// What is said before a run of `changes`, of which there are some.
[[nodiscard]] QString changedSourcesMessage(const std::vector<SourceChange> &changes);

/// What is said when `names`, of which there are some, were chosen to be added and cannot be found.
[[nodiscard]] QString lostFilesMessage(const QStringList &names);

/// The same of the folder called `name`, which was chosen for the copies.
[[nodiscard]] QString lostFolderMessage(const QString &name);

} // namespace tallyfold
