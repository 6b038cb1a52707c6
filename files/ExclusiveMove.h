#pragma once

#include "files/FileCalls.h"

#include <string>

/// Renames a file within a folder and never replaces an existing name, in the ways that file systems
/// support. Each takes the folder's open descriptor and gives 0 or the error number: EEXIST for a name that
/// exists, a dangling symbolic link included.
namespace tallyfold::files::ExclusiveMove {

/// The first of the three below that the file system supports.
[[nodiscard]] int move(FileCalls &calls, int folder, const std::string &from, const std::string &to);

/// By renameat2; EINVAL, ENOSYS or ENOTSUP where the file system lacks it (NFS, some FUSE file systems).
[[nodiscard]] int byRenaming(FileCalls &calls, int folder, const std::string &from, const std::string &to);

/// By a hard link, then removing the old name; EPERM, ENOSYS, ENOTSUP or EMLINK without hard links (FAT). An
/// old name that cannot be removed stays, which does no harm.
[[nodiscard]] int byLinking(FileCalls &calls, int folder, const std::string &from, const std::string &to);

/// By a copy into a new file, flushed, then removing the old file. On failure the new file is removed.
[[nodiscard]] int byCopying(FileCalls &calls, int folder, const std::string &from, const std::string &to);

} // namespace tallyfold::files::ExclusiveMove
