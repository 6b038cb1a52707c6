#pragma once

#include "files/FileCalls.h"

#include <string>

/// Ways to give a file in a folder another name without ever replacing what has that name, for file systems
/// that differ in what they can do. Each takes the folder's open descriptor and gives 0 or the error number;
/// with EEXIST for a name that is taken, by a dangling symbolic link as well.
namespace tallyfold::files::ExclusiveMove {

/// The best of the three that the file system has.
[[nodiscard]] int move(FileCalls &calls, int folder, const std::string &from, const std::string &to);

/// In one step; EINVAL, ENOSYS or ENOTSUP where the file system cannot (NFS, some FUSE file systems).
[[nodiscard]] int byRenaming(FileCalls &calls, int folder, const std::string &from, const std::string &to);

/// A second name, then the first one goes; EPERM, ENOSYS, ENOTSUP or EMLINK where there are no hard links
/// (FAT). A first name that cannot be removed stays, which is untidy and nothing worse.
[[nodiscard]] int byLinking(FileCalls &calls, int folder, const std::string &from, const std::string &to);

/// A copy into a new file of that name, flushed, then the first file goes. Should it fail, the new file is
/// removed.
[[nodiscard]] int byCopying(FileCalls &calls, int folder, const std::string &from, const std::string &to);

} // namespace tallyfold::files::ExclusiveMove
