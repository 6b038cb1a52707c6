#include "tests/support/Tool.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char **environ;

namespace tallyfold::tests {

namespace {

/// A file in memory that a program writes into.
class Capture {
public:
    ~Capture()
    {
        ::close(m_file);
    }
    Capture(const Capture &) = delete;
    Capture &operator=(const Capture &) = delete;
    Capture() = default;

    [[nodiscard]] int file() const
    {
        return m_file;
    }
    [[nodiscard]] std::string text() const
    {
        std::string text;
        std::array<char, 65536> part{};
        ssize_t count = 0;
        while ((count = ::pread(m_file, part.data(), part.size(), static_cast<off_t>(text.size()))) > 0) {
            text.append(part.data(), static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    int m_file = ::memfd_create("output", MFD_CLOEXEC);
};

/// Waits for the end of `process`, and ends it when that takes too long; its exit code, or -1.
int exitCodeOf(pid_t process)
{
    constexpr std::chrono::seconds longestRun(60);
    const auto deadline = std::chrono::steady_clock::now() + longestRun;
    int status = 0;
    pid_t ended = 0;
    while ((ended = ::waitpid(process, &status, WNOHANG)) == 0 || (ended < 0 && errno == EINTR)) {
        if (std::chrono::steady_clock::now() > deadline) {
            ::kill(process, SIGKILL);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return ended == process && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

ToolResult runTool(const std::vector<std::string> &arguments)
{
    // Not with QProcess: the thread sanitizer takes its child for a copy of the program, does not look at
    // threads that are started afterwards as it should, and finds races that are none.
    const Capture output;
    const Capture errors;
    std::vector<std::string> own = arguments;
    std::vector<char *> values;
    for (std::string &argument : own) {
        values.push_back(argument.data());
    }
    values.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output.file(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors.file(), STDERR_FILENO);
    pid_t process = -1;
    const int error = ::posix_spawnp(&process, values.front(), &actions, nullptr, values.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        return {};
    }
    const int exitCode = exitCodeOf(process);
    return {exitCode, output.text(), errors.text()};
}

} // namespace tallyfold::tests
