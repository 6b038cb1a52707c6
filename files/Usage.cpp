#include "files/Usage.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <ctime>
#include <fcntl.h>
#include <pthread.h>
#include <string_view>
#include <unistd.h>

namespace tallyfold::files {

namespace {

/// Enough for everything that does not recurse, with the sanitizers' larger frames.
constexpr std::size_t spare = 256 * 1024;

/// The address below which only the spare part of this thread's stack is left; 0 when that cannot be found
/// out.
std::uintptr_t lastGoodAddress()
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) {
        return 0;
    }
    void *lowest = nullptr;
    std::size_t size = 0;
    const int error = pthread_attr_getstack(&attributes, &lowest, &size);
    pthread_attr_destroy(&attributes);
    return error == 0 ? reinterpret_cast<std::uintptr_t>(lowest) + spare : 0;
}

} // namespace

bool isStackNearlyFull()
{
    thread_local const std::uintptr_t lastGood = lastGoodAddress();
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < lastGood;
}

std::chrono::nanoseconds processorTimeOfThread()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::int64_t memoryOfProcess() noexcept
{
    const int file = ::open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return 0;
    }
    std::array<char, 128> line{};
    const ssize_t length = ::read(file, line.data(), line.size());
    ::close(file);
    std::string_view rest(line.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    std::array<std::int64_t, 3> pages{}; // All addresses, what is in memory, and what of it is shared.
    for (std::int64_t &count : pages) {
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), count);
        if (error != std::errc() || end == rest.data() + rest.size()) {
            return 0;
        }
        rest.remove_prefix(static_cast<std::size_t>(end + 1 - rest.data()));
    }
    return (pages[1] - pages[2]) * ::sysconf(_SC_PAGESIZE);
}

} // namespace tallyfold::files
