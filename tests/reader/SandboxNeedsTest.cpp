#include "reader/Sandbox.h"

#include "tests/reader/Child.h"
#include "tests/reader/SandboxThere.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <ostream>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tallyfold::reader {

namespace {

/// A call of the system that reading may need, be it with another C library or on another processor.
struct Need {
    const char *name;
    long number;
};

void PrintTo(const Need &need, std::ostream *stream)
{
    *stream << need.name;
}

/// The error of the call with arguments that no call can do anything with.
int errorOf(long number)
{
    errno = 0;
    long result = 0;
    if (number == SYS_ppoll) { // It would wait.
        const timespec noTime{};
        result = ::syscall(number, nullptr, 0, &noTime, nullptr, 0);
    } else {
        result = ::syscall(number, -1, 0, 0, 0, 0, 0);
    }
    return result < 0 ? errno : 0;
}

#define NEED(name)                                                                                           \
    Need                                                                                                     \
    {                                                                                                        \
#name, SYS_##name                                                                                    \
    }

const Need needs[] = {
    NEED(brk),
    NEED(madvise),
    NEED(mmap),
    NEED(mprotect),
    NEED(mremap),
    NEED(munmap),
    //
    NEED(close),
    NEED(close_range),
    NEED(dup),
    NEED(fadvise64),
    NEED(lseek),
    NEED(pread64),
    NEED(preadv),
    NEED(preadv2),
    NEED(read),
    NEED(readv),
    NEED(write),
    NEED(writev),
    //
    NEED(faccessat),
    NEED(faccessat2),
    NEED(fstat),
    NEED(fstatfs),
    NEED(getcwd),
    NEED(getdents64),
    NEED(newfstatat),
    NEED(readlinkat),
    NEED(statfs),
    NEED(statx),
    //
    NEED(clock_nanosleep),
    NEED(nanosleep),
    NEED(ppoll),
    NEED(restart_syscall),
    NEED(sched_yield),
    //
    NEED(futex),
    NEED(get_robust_list),
    NEED(membarrier),
    NEED(rseq),
    NEED(rt_sigaction),
    NEED(rt_sigprocmask),
    NEED(set_robust_list),
    NEED(set_tid_address),
    NEED(setitimer),
    NEED(sigaltstack),
    //
    NEED(clock_getres),
    NEED(clock_gettime),
    NEED(getcpu),
    NEED(getegid),
    NEED(geteuid),
    NEED(getgid),
    NEED(getpid),
    NEED(getppid),
    NEED(getrandom),
    NEED(getrusage),
    NEED(gettid),
    NEED(gettimeofday),
    NEED(getuid),
    NEED(sched_getaffinity),
    NEED(sysinfo),
    NEED(times),
    NEED(uname),
#ifdef SYS_stat // Newer processors have the ones above alone.
    NEED(access),
    NEED(getdents),
    NEED(lstat),
    NEED(poll),
    NEED(readlink),
    NEED(stat),
    NEED(time),
#endif
};

#undef NEED

class Needed : public testing::TestWithParam<Need> {};

} // namespace

TEST_P(Needed, IsAnsweredInTheSandboxAsItIsOutside)
{
    constexpr int notEntered = 255;
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    const tests::ChildEnd outside = tests::inChild([] { return errorOf(GetParam().number); });
    const tests::ChildEnd inside = tests::inChild([] {
        return enterSandbox(STDIN_FILENO) == SandboxEntry::entered ? errorOf(GetParam().number) : notEntered;
    });
    EXPECT_EQ(inside.code, outside.code);
    EXPECT_EQ(inside.signal, outside.signal);
}

INSTANTIATE_TEST_SUITE_P(Sandbox, Needed, testing::ValuesIn(needs),
                         [](const auto &need) { return std::string(need.param.name); });

TEST(SandboxNeeds, SignalsOfItsOwnAreHandledAndReturnedFrom)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    static volatile std::sig_atomic_t handled = 0;
    const tests::ChildEnd end = tests::inChild([] {
        if (enterSandbox(STDIN_FILENO) != SandboxEntry::entered) {
            return 1;
        }
        std::signal(SIGUSR1, [](int) { handled = handled + 1; });
        return ::kill(::getpid(), SIGUSR1) == 0 && std::raise(SIGUSR1) == 0 && handled == 2 ? 0 : 2;
    });
    EXPECT_EQ(end, (tests::ChildEnd{0, 0}));
}

TEST(SandboxNeeds, ItsOwnLimitsAreLookedAtAndNotChanged)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    const tests::ChildEnd end = tests::inChild([] {
        if (enterSandbox(STDIN_FILENO) != SandboxEntry::entered) {
            return 1;
        }
        rlimit limits{};
        if (::getrlimit(RLIMIT_NOFILE, &limits) != 0) {
            return 2;
        }
        return ::setrlimit(RLIMIT_NOFILE, &limits) == 0 ? 3 : 0;
    });
    EXPECT_EQ(end, (tests::ChildEnd{0, 0}));
}

} // namespace tallyfold::reader
