#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <vector>

namespace tallyfold {

/// The result of `collectPdfs`.
struct CollectedPdfs {
    std::vector<std::filesystem::path> locations;
    /// The folders that could not be listed completely, so that files in them may be missing, in the order of
    /// the search.
    std::vector<std::filesystem::path> unreadableFolders;
};

/// The PDF files in `items`, which are files and folders. Files keep their order; the files of a folder take
/// its place, in natural order of their relative paths. Folders are searched recursively, without hidden
/// files and folders; a folder whose name ends in ".pdf" is listed like a file, in addition to its contents.
/// Each normalized path is listed once, at its first place. Items that do not exist are skipped, and a folder
/// that cannot be listed completely contributes the files that could be listed. Names are bytes and need not
/// be valid UTF-8. Keeps at most one directory open. Never throws.
[[nodiscard]] CollectedPdfs collectPdfs(std::span<const std::filesystem::path> items);

/// A directory entry. Symbolic links to folders are not folders.
struct FolderEntry {
    std::filesystem::path path;
    bool isFolder = false;
};

/// Appends the entries of `folder` to `entries`; false if some could not be read.
using ListFolder =
    std::function<bool(const std::filesystem::path &folder, std::vector<FolderEntry> &entries)>;

/// As above with another way to list a folder, which can fail in tests.
[[nodiscard]] CollectedPdfs collectPdfs(std::span<const std::filesystem::path> items, const ListFolder &list);

/// Lists a folder of the file system.
[[nodiscard]] bool listFolder(const std::filesystem::path &folder, std::vector<FolderEntry> &entries);

/// `path`, absolute, without ".", ".." and repeated slashes. Symbolic links are not resolved: a link and its
/// target are two documents with two names.
[[nodiscard]] std::filesystem::path standardized(const std::filesystem::path &path);

} // namespace tallyfold
