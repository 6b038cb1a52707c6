#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <vector>

namespace tallyfold {

/// What there is among files and folders.
struct CollectedPdfs {
    std::vector<std::filesystem::path> locations;
    /// The folders of which not everything could be listed: what is in them may be missing. In the order in
    /// which they were met.
    std::vector<std::filesystem::path> unreadableFolders;
};

/// The PDF files among `items`, files and folders as they were dropped or chosen: files in the order given, a
/// folder's files together at its place, in natural order of their paths inside it. Folders are searched to
/// any depth, hidden files and folders left out; a folder whose name ends in ".pdf" is listed like a file,
/// and its contents as well. Each standardised path is listed once, at its first place. Items that do not
/// exist give nothing, and of a folder that cannot be read to its end, what could be; the others are searched
/// all the same. Names are bytes here: one that is not valid text is found like any other. Holds one file
/// open at a time. Never throws.
[[nodiscard]] CollectedPdfs collectPdfs(std::span<const std::filesystem::path> items);

/// One thing in a folder; a symbolic link is no folder, wherever it leads.
struct FolderEntry {
    std::filesystem::path path;
    bool isFolder = false;
};

/// Appends what is in `folder` to `entries`; false when that is not all.
using ListFolder =
    std::function<bool(const std::filesystem::path &folder, std::vector<FolderEntry> &entries)>;

/// The same with the listing of a folder that it is given, which tests let fail.
[[nodiscard]] CollectedPdfs collectPdfs(std::span<const std::filesystem::path> items, const ListFolder &list);

/// The listing itself.
[[nodiscard]] bool listFolder(const std::filesystem::path &folder, std::vector<FolderEntry> &entries);

/// `path` made absolute, without ".", ".." and repeated slashes. Symbolic links are not resolved: a link and
/// the file it leads to are two documents with two names.
[[nodiscard]] std::filesystem::path standardized(const std::filesystem::path &path);

} // namespace tallyfold
