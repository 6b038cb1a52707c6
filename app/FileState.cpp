#include "app/FileState.h"

#include "files/FileStatus.h"

namespace tallyfold {

FileState FileState::of(const std::filesystem::path &location)
{
    const std::optional<files::FileStatus> status = files::FileStatus::of(location);
    if (!status) {
        return {};
    }
    return {true, status->size, status->modified.seconds, status->modified.nanoseconds, status->inode};
}

} // namespace tallyfold
