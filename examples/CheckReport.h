#pragma once

#include "core/check/HashList.h"
#include "core/check/ProductionCheck.h"

#include <QJsonObject>

#include <filesystem>
#include <span>

/// What `check` prints: findings as JSON, each with the name of its kind.
namespace tallyfold::CheckReport {

[[nodiscard]] QJsonObject of(const check::Outcome &outcome, std::span<const std::filesystem::path> folders);
[[nodiscard]] QJsonObject of(const check::HashesWritten &written);

} // namespace tallyfold::CheckReport
