#include "tests/reader/Child.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace tallyfold::tests {

ChildEnd inChild(const std::function<int()> &work)
{
    const pid_t child = ::fork();
    if (child < 0) {
        std::perror("fork");
        std::abort();
    }
    if (child == 0) {
        ::_exit(work());
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            std::perror("waitpid");
            std::abort();
        }
    }
    return WIFEXITED(status) ? ChildEnd{WEXITSTATUS(status), 0} : ChildEnd{-1, WTERMSIG(status)};
}

} // namespace tallyfold::tests
