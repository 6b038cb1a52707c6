#include "reader/Sandbox.h"

#include "files/UnderSanitizer.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sched.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <type_traits>
#include <unistd.h>

namespace tallyfold::reader {

namespace {

/// Calls that are let through whatever their arguments. Not every architecture and not every libseccomp has
/// each of them.
constexpr const char *freeCalls[] = {
    // Memory.
    "brk", "madvise", "mmap", "mprotect", "mremap", "munmap",
    // Reading, and writing to what is open already, which the file size limit keeps to sockets and devices.
    "close", "close_range", "dup", "fadvise64", "lseek", "pread64", "preadv", "preadv2", "read", "readv",
    "write", "writev",
    // Looking at files: fontconfig and the loader look at many.
    "access", "faccessat", "faccessat2", "fstat", "fstatfs", "getcwd", "getdents", "getdents64", "lstat",
    "newfstatat", "readlink", "readlinkat", "stat", "statfs", "statx",
    // Waiting.
    "clock_nanosleep", "nanosleep", "poll", "ppoll", "restart_syscall", "sched_yield",
    // Threads, locks and signals of its own.
    "futex", "get_robust_list", "membarrier", "rseq", "rt_sigaction", "rt_sigprocmask", "rt_sigreturn",
    "set_robust_list", "set_tid_address", "setitimer", "sigaltstack",
    // Who and where it is, and what time.
    "clock_getres", "clock_gettime", "getcpu", "getegid", "geteuid", "getgid", "getpid", "getppid",
    "getrandom", "getrusage", "gettid", "gettimeofday", "getuid", "sched_getaffinity", "sysinfo", "time",
    "times", "uname",
    // The end.
    "exit", "exit_group"};

/// The same for what sanitizers do when they start threads and report.
constexpr const char *callsOfSanitizers[] = {"pipe", "pipe2", "sched_setaffinity"};

/// Opening with any of these bits is not reading.
constexpr unsigned writingBits =
    O_WRONLY | O_RDWR | O_CREAT | O_TRUNC | (static_cast<unsigned>(O_TMPFILE) & ~unsigned{O_DIRECTORY});

using Condition = scmp_arg_cmp;

constexpr Condition equals(unsigned argument, scmp_datum_t value)
{
    return {argument, SCMP_CMP_EQ, value, 0};
}

/// Whether the bits `mask` of the argument are `value`.
constexpr Condition masked(unsigned argument, scmp_datum_t mask, scmp_datum_t value)
{
    return {argument, SCMP_CMP_MASKED_EQ, mask, value};
}

/// Rules in the making. Once one could not be added, the filter is not to be used.
class Filter {
public:
    // A call that is not known to be harmless does not seem to be there: the C library has a way around calls
    // that older systems lack, and none around calls that are forbidden.
    Filter() : m_context(::seccomp_init(SCMP_ACT_ERRNO(ENOSYS))), m_isSound(m_context != nullptr)
    {
        set(SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS);
        set(SCMP_FLTATR_CTL_TSYNC, 1);
        set(SCMP_FLTATR_CTL_OPTIMIZE, 2); // A search tree: some calls come a hundred times a page.
    }

    void allow(const char *call)
    {
        add(SCMP_ACT_ALLOW, call);
    }
    template <typename... Conditions> void allowIf(const char *call, Conditions... conditions)
    {
        add(SCMP_ACT_ALLOW, call, conditions...);
    }
    template <typename... Conditions> void refuseIf(int error, const char *call, Conditions... conditions)
    {
        add(SCMP_ACT_ERRNO(static_cast<unsigned>(error)), call, conditions...);
    }

    [[nodiscard]] bool load()
    {
        return m_isSound && ::seccomp_load(m_context.get()) == 0;
    }

private:
    struct Release {
        void operator()(void *context) const
        {
            ::seccomp_release(context);
        }
    };

    void set(scmp_filter_attr attribute, std::uint32_t value)
    {
        m_isSound = m_isSound && ::seccomp_attr_set(m_context.get(), attribute, value) == 0;
    }

    template <typename... Conditions>
    void add(std::uint32_t action, const char *call, Conditions... conditions)
    {
        const int number = ::seccomp_syscall_resolve_name(call);
        if (number < 0 || !m_isSound) { // Not of this architecture, or newer than the library.
            return;
        }
        const scmp_arg_cmp all[] = {conditions..., scmp_arg_cmp{}};
        m_isSound =
            ::seccomp_rule_add_array(m_context.get(), action, number, sizeof...(conditions), all) == 0;
    }

    std::unique_ptr<void, Release> m_context;
    bool m_isSound;
};

/// Lets `call`, whose argument of that number are the flags of open, read and only read.
void addOpening(Filter &filter, const char *call, unsigned flags)
{
    filter.allowIf(call, masked(flags, writingBits, 0));
    for (unsigned bit = 1; bit != 0 && bit <= writingBits; bit <<= 1U) {
        if ((writingBits & bit) != 0) {
            filter.refuseIf(EACCES, call, masked(flags, bit, bit));
        }
    }
}

/// Whether the system has filters at all: one that has looks for this one, where none is.
bool hasFilters()
{
    return ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, nullptr) != 0 && errno != EINVAL;
}

} // namespace

SandboxEntry enterSandbox(int socket)
{
    if (!hasFilters()) {
        return SandboxEntry::leftOut;
    }
    Filter filter;
    for (const char *call : freeCalls) {
        filter.allow(call);
    }
    if (isUnderSanitizer) {
        for (const char *call : callsOfSanitizers) {
            filter.allow(call);
        }
    }
    addOpening(filter, "open", 1);
    addOpening(filter, "openat", 2);
    const auto ownEnd = static_cast<scmp_datum_t>(socket);
    filter.allowIf("recvmsg", equals(0, ownEnd));
    filter.allowIf("sendmsg", equals(0, ownEnd));
    for (const int command : {F_GETFD, F_SETFD, F_GETFL, F_DUPFD, F_DUPFD_CLOEXEC}) {
        filter.allowIf("fcntl", equals(1, static_cast<scmp_datum_t>(command)));
    }
    // Its own limits, to look at them.
    filter.allowIf("prlimit64", equals(0, 0), equals(2, 0));
    // Ending itself by a signal, as abort does.
    const auto self = static_cast<scmp_datum_t>(::getpid());
    filter.allowIf("kill", equals(0, self));
    filter.allowIf("tgkill", equals(0, self));
    // Threads, but no processes. What the newer clone3 is to do lies in memory, where no filter looks;
    // without it the C library takes the older one.
    const unsigned flags = 0;
    filter.allowIf("clone", masked(flags, CLONE_THREAD, CLONE_THREAD));
    filter.refuseIf(EPERM, "clone", masked(flags, CLONE_THREAD, 0));
    return filter.load() ? SandboxEntry::entered : SandboxEntry::refused;
}

} // namespace tallyfold::reader
