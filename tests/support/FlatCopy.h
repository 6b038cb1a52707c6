#pragma once

#include <filesystem>
#include <string_view>

namespace tallyfold::tests {

/// Writes `source`, the bytes of a PDF file, into `folder`, and beside it a copy without any stamp; gives the
/// copy's path. Ends the test program when there is no copy.
[[nodiscard]] std::filesystem::path flatCopy(const std::filesystem::path &folder, std::string_view source);

} // namespace tallyfold::tests
