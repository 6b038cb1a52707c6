#pragma once

#include <filesystem>

namespace tallyfold::tests {

/// Makes the folder `path` with one below it that nobody can list, whatever his rights: folders lie in
/// folders until the path to the innermost is longer than a path may be.
void makeUnreadableFolder(const std::filesystem::path &path);

} // namespace tallyfold::tests
