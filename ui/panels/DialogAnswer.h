#pragma once

#include "app/Panels.h"

#include <QList>
#include <QUrl>

#include <filesystem>
#include <optional>

namespace tallyfold {

/// The file or folder that a dialog calls `named`. Most dialogs give names as text, in which bytes that are
/// none become replacement characters: what is called so is looked for among its neighbours. Nothing when
/// there is none, or when several look the same.
[[nodiscard]] std::optional<std::filesystem::path> itemCalled(const std::filesystem::path &named);

/// What a dialog means that gives `urls`. Those that lead to no file of this machine are lost.
[[nodiscard]] PanelAnswer answerOf(const QList<QUrl> &urls);

} // namespace tallyfold
