#pragma once

#include "pdf/PageReader.h"

#include <filesystem>
#include <memory>

namespace tallyfold::reader {

/// A reader of the file at `path` in this very process; null when Poppler cannot read it or it needs a
/// password.
[[nodiscard]] std::unique_ptr<pdf::PageReader> openWithPoppler(const std::filesystem::path &path);

} // namespace tallyfold::reader
