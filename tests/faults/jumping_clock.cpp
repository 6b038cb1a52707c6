// Loaded before a program's own libraries, it makes the clock on the wall jump by years at every look,
// forward and back. The clocks that only run forward stay as they are.

#include <atomic>
#include <ctime>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

time_t jumped(time_t seconds)
{
    static std::atomic<unsigned> looks = 0;
    constexpr time_t year = 31'556'952;
    return seconds + (looks++ % 2 == 0 ? 20 : -20) * year;
}

bool isWallClock(clockid_t clock)
{
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE || clock == CLOCK_TAI;
}

} // namespace

// The system's own functions, by the names that the library gives them.
extern "C" {

int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    const long result = ::syscall(SYS_clock_gettime, clock, time);
    if (result == 0 && isWallClock(clock)) {
        time->tv_sec = jumped(time->tv_sec);
    }
    return static_cast<int>(result);
}

int gettimeofday(timeval *time, void *) noexcept
{
    timespec now{};
    const int result = ::clock_gettime(CLOCK_REALTIME, &now);
    *time = {now.tv_sec, now.tv_nsec / 1000};
    return result;
}

time_t time(time_t *seconds) noexcept
{
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    if (seconds != nullptr) {
        *seconds = now.tv_sec;
    }
    return now.tv_sec;
}
}
