#include "pdf/viewing/ReaderProcess.h"

#include "pdf/log/Log.h"
#include "pdf/viewing/ReaderMessages.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

extern char **environ;

namespace tallyfold::pdf {

namespace {

constexpr std::size_t maxKept = 2;
constexpr const char *readerName = "tallyfold-reader";

std::mutex keptMutex;

std::vector<std::unique_ptr<ReaderProcess>> &kept()
{
    static std::vector<std::unique_ptr<ReaderProcess>> processes;
    return processes;
}

/// Logs how the reader ended that gave no answer, from the `status` of waitpid.
void logEnd(int status)
{
    if (WIFSIGNALED(status)) {
        qCInfo(pdfLog) << "the reader gave no answer; it was ended by signal" << WTERMSIG(status);
    } else {
        qCInfo(pdfLog) << "the reader gave no answer; it ended with code" << WEXITSTATUS(status);
    }
}

} // namespace

ReaderProcess::Program ReaderProcess::Program::of(const std::filesystem::path &program)
{
    const std::filesystem::path folder = program.parent_path();
    const std::filesystem::path beside = folder / readerName;
    std::error_code error;
    const bool isBeside = std::filesystem::exists(beside, error);
    return {isBeside ? beside : (folder / TALLYFOLD_READER_FROM_PROGRAM / readerName).lexically_normal(),
            std::chrono::seconds(5)};
}

ReaderProcess::Program ReaderProcess::Program::installed()
{
    std::error_code error;
    return of(std::filesystem::read_symlink("/proc/self/exe", error));
}

ReaderProcess::ReaderProcess(Program program) : m_program(std::move(program)) {}

std::unique_ptr<ReaderProcess> ReaderProcess::borrow()
{
    const std::scoped_lock lock(keptMutex);
    while (!kept().empty()) {
        std::unique_ptr<ReaderProcess> process = std::move(kept().back());
        kept().pop_back();
        if (process->isWaiting()) {
            return process;
        }
    }
    return std::make_unique<ReaderProcess>();
}

void ReaderProcess::giveBack(std::unique_ptr<ReaderProcess> process)
{
    const std::scoped_lock lock(keptMutex);
    if (kept().size() < maxKept && process->m_socket.isOpen()) {
        kept().push_back(std::move(process));
    }
}

ReaderProcess::~ReaderProcess()
{
    stop();
}

bool ReaderProcess::isWaiting() const
{
    pollfd end{m_socket.number(), POLLIN, 0};
    return m_socket.isOpen() && ::poll(&end, 1, 0) == 0;
}

bool ReaderProcess::start()
{
    std::array<int, 2> sockets{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
        qCInfo(pdfLog) << "no socket for the reader:" << std::generic_category().message(errno).c_str();
        return false;
    }
    files::Descriptor own(sockets[0]);
    const files::Descriptor childs(sockets[1]);
    // The child's end becomes its standard input; what it may print goes nowhere.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, childs.number(), STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    // Other files that are open here are not passed on.
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    // A process group of its own: Ctrl-C in a terminal goes to the program, which ends its reader itself.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    std::string path = m_program.path.native();
    std::array<char *, 2> arguments{path.data(), nullptr};
    const int error =
        ::posix_spawn(&m_process, path.c_str(), &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        qCInfo(pdfLog) << "the reader cannot be started:" << std::generic_category().message(error).c_str();
        m_process = -1;
        return false;
    }
    m_socket = std::move(own);
    return true;
}

std::shared_ptr<SharedPixelBuffer> ReaderProcess::bufferFor(std::size_t size)
{
    return m_buffers.lend(size);
}

int ReaderProcess::stop()
{
    int status = 0;
    m_buffers.clear(); // The next process has nothing to do with this one.
    m_socket = files::Descriptor();
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
        while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
        }
        m_process = -1;
    }
    return status;
}

std::optional<std::string> ReaderProcess::ask(std::string_view request, int descriptor,
                                              const std::stop_token &givenUp)
{
    if (givenUp.stop_requested() || (!m_socket.isOpen() && !start())) {
        return std::nullopt;
    }
    std::optional<std::string> answer = converse(request, descriptor, givenUp);
    if (!answer) {
        const int status = stop();
        if (!givenUp.stop_requested()) {
            logEnd(status);
        }
    }
    return answer;
}

std::optional<std::string> ReaderProcess::converse(std::string_view request, int descriptor,
                                                   const std::stop_token &givenUp)
{
    // The process id stays valid while this waits: only `stop` reaps the process.
    const std::stop_callback end(givenUp, [process = m_process] { ::kill(process, SIGKILL); });
    const auto deadline = std::chrono::steady_clock::now() + m_program.maxAnswerTime;
    if (!ReaderMessages::send(m_socket.number(), request, descriptor)) {
        return std::nullopt;
    }
    auto answer = ReaderMessages::receive(m_socket.number(), deadline); // A file would be unwanted.
    return answer ? std::optional(std::move(answer->bytes)) : std::nullopt;
}

} // namespace tallyfold::pdf
