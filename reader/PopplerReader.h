#pragma once

#include "reader/LocalReader.h"

#include <filesystem>
#include <memory>

namespace tallyfold::reader {

/// A reader of the file at `path`; null when Poppler cannot read it or it needs a password.
[[nodiscard]] std::unique_ptr<LocalReader> openWithPoppler(const std::filesystem::path &path);

} // namespace tallyfold::reader
