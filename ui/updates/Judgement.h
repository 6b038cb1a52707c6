#pragma once

#include "ui/updates/AppVersion.h"
#include "ui/updates/Appcast.h"
#include "ui/updates/UpdateOutcome.h"

#include <QByteArray>

#include <optional>

namespace tallyfold {

/// The version to compare of `item`: the one users call it by, and the other one where that is none.
[[nodiscard]] std::optional<AppVersion> versionOf(const AppcastItem &item);

/// Whether `item` is for the system that this program runs on; one that names no system is for all.
[[nodiscard]] bool isForThisSystem(const AppcastItem &item);

/// What the feed `bytes` means to a program of the version `current`: the newest release for this system
/// counts, wherever it stands. A feed without releases for it is up to date; one whose releases for it all
/// have versions that cannot be read is a bad feed, as is one that is no appcast.
[[nodiscard]] UpdateOutcome judge(const QByteArray &bytes, const AppVersion &current);

} // namespace tallyfold
