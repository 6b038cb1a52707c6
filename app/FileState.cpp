#include "app/FileState.h"

#include <sys/stat.h>

namespace tallyfold {

FileState FileState::of(const std::filesystem::path &location)
{
    struct stat status {};
    if (::stat(location.c_str(), &status) != 0) {
        return {};
    }
    return {true, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ino};
}

} // namespace tallyfold
