#include "tests/support/UnreadableFolder.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyfold::tests {

void makeUnreadableFolder(const std::filesystem::path &path)
{
    std::filesystem::create_directories(path);
    const std::string name(200, 'd');
    int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (std::size_t length = path.native().size(); length <= PATH_MAX; length += name.size() + 1) {
        const bool isMade = ::mkdirat(folder, name.c_str(), 0777) == 0;
        const int inner = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (!isMade || inner < 0) {
            std::perror("mkdirat");
            std::abort();
        }
        ::close(folder);
        folder = inner;
    }
    ::close(folder);
}

} // namespace tallyfold::tests
