#pragma once

#include <filesystem>
#include <string_view>

namespace tallyfold::tests {

/// The file `name` of a font package that scripts/packages.txt lists. Throws when it is not installed, so
/// that the test that needs it fails.
[[nodiscard]] std::filesystem::path fontFile(std::string_view name);

} // namespace tallyfold::tests
