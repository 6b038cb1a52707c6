#pragma once

#include <filesystem>
#include <span>
#include <vector>

namespace tallyfold {

/// The PDF files among `items`, files and folders as they were dropped or chosen: files in the order given, a
/// folder's files together at its place, in natural order of their paths inside it. Folders are searched to
/// any depth, hidden files and folders left out; a folder whose name ends in ".pdf" is listed like a file,
/// and its contents as well. Each standardised path is listed once, at its first place. Items that do not
/// exist and folders that cannot be read give nothing. Names are bytes here: one that is not valid text is
/// found like any other. Never throws.
[[nodiscard]] std::vector<std::filesystem::path>
collectPdfLocations(std::span<const std::filesystem::path> items);

/// `path` made absolute, without ".", ".." and repeated slashes. Symbolic links are not resolved: a link and
/// the file it leads to are two documents with two names.
[[nodiscard]] std::filesystem::path standardized(const std::filesystem::path &path);

} // namespace tallyfold
