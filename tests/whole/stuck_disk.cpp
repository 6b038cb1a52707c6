// Loaded before a program's own libraries, it lets threads wait without end when they read a file whose name
// begins with "stuck": a disk that was unplugged, or a server that is gone. The main thread never waits, and
// the first other thread, by which the file comes into the list, only where the name begins with
// "stuck from the first".

#include <array>
#include <atomic>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic<pid_t> firstThread = 0;

bool isFirst()
{
    pid_t none = 0;
    return firstThread.compare_exchange_strong(none, ::gettid()) || firstThread == ::gettid();
}

bool isStuck(int file)
{
    std::array<char, 4096> target{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    const std::string_view path(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    const std::string_view name = path.substr(path.rfind('/') + 1);
    return name.starts_with("stuck from the first") || (name.starts_with("stuck") && !isFirst());
}

ssize_t readOrWait(int file, void *bytes, size_t count, off_t offset)
{
    while (::gettid() != ::getpid() && isStuck(file)) {
        ::prctl(PR_SET_NAME, "stuck"); // So that it can be seen from outside.
        ::pause();
    }
    return ::syscall(SYS_pread64, file, bytes, count, offset);
}

} // namespace

// The system's own function, by both names that the library gives it.
extern "C" {

ssize_t pread(int file, void *bytes, size_t count, off_t offset)
{
    return readOrWait(file, bytes, count, offset);
}

ssize_t pread64(int file, void *bytes, size_t count, off_t offset)
{
    return readOrWait(file, bytes, count, offset);
}
}
