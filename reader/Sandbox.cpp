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

/// System calls that are allowed with any arguments. Not every architecture and version of libseccomp has
/// each of them.
constexpr const char *freeCalls[] = {
    // Memory.
    "brk", "madvise", "mmap", "mprotect", "mremap", "munmap",
    // Reading, and writing to open files, which the file size limit restricts to sockets and devices.
    "close", "close_range", "dup", "fadvise64", "lseek", "pread64", "preadv", "preadv2", "read", "readv",
    "write", "writev",
    // File status and directories, which fontconfig and the loader need.
    "access", "faccessat", "faccessat2", "fstat", "fstatfs", "getcwd", "getdents", "getdents64", "lstat",
    "newfstatat", "readlink", "readlinkat", "stat", "statfs", "statx",
    // Waiting.
    "clock_nanosleep", "nanosleep", "poll", "ppoll", "restart_syscall", "sched_yield",
    // Threads, locks and signals of this process.
    "futex", "get_robust_list", "membarrier", "rseq", "rt_sigaction", "rt_sigprocmask", "rt_sigreturn",
    "set_robust_list", "set_tid_address", "setitimer", "sigaltstack",
    // Identity, environment and time.
    "clock_getres", "clock_gettime", "getcpu", "getegid", "geteuid", "getgid", "getpid", "getppid",
    "getrandom", "getrusage", "gettid", "gettimeofday", "getuid", "sched_getaffinity", "sysinfo", "time",
    "times", "uname",
    // Exit.
    "exit", "exit_group"};

/// The same for sanitizers, when they start threads and report.
constexpr const char *callsOfSanitizers[] = {"pipe", "pipe2", "sched_setaffinity"};

/// Flags of open other than for reading.
constexpr unsigned writingBits =
    O_WRONLY | O_RDWR | O_CREAT | O_TRUNC | (static_cast<unsigned>(O_TMPFILE) & ~unsigned{O_DIRECTORY});

using Condition = scmp_arg_cmp;

constexpr Condition equals(unsigned argument, scmp_datum_t value)
{
    return {argument, SCMP_CMP_EQ, value, 0};
}

/// Compares the bits `mask` of the argument with `value`.
constexpr Condition masked(unsigned argument, scmp_datum_t mask, scmp_datum_t value)
{
    return {argument, SCMP_CMP_MASKED_EQ, mask, value};
}

/// Builds the filter. It is invalid once a rule could not be added.
class Filter {
public:
    // Other calls fail with ENOSYS: the C library has fallbacks for calls that older systems lack, and none
    // for calls that are forbidden.
    Filter() : m_context(::seccomp_init(SCMP_ACT_ERRNO(ENOSYS))), m_isSound(m_context != nullptr)
    {
        set(SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS);
        set(SCMP_FLTATR_CTL_TSYNC, 1);
        set(SCMP_FLTATR_CTL_OPTIMIZE, 2); // A binary search: some calls are made a hundred times a page.
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
        if (number < 0 || !m_isSound) { // Not on this architecture, or newer than libseccomp.
            return;
        }
        const scmp_arg_cmp all[] = {conditions..., scmp_arg_cmp{}};
        m_isSound =
            ::seccomp_rule_add_array(m_context.get(), action, number, sizeof...(conditions), all) == 0;
    }

    std::unique_ptr<void, Release> m_context;
    bool m_isSound;
};

/// Allows `call` for reading only; its argument number `flags` has the flags of open.
void addOpening(Filter &filter, const char *call, unsigned flags)
{
    filter.allowIf(call, masked(flags, writingBits, 0));
    for (unsigned bit = 1; bit != 0 && bit <= writingBits; bit <<= 1U) {
        if ((writingBits & bit) != 0) {
            filter.refuseIf(EACCES, call, masked(flags, bit, bit));
        }
    }
}

/// Whether the system supports filters: without, any request for one fails with EINVAL.
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
    // Reading its own limits.
    filter.allowIf("prlimit64", equals(0, 0), equals(2, 0));
    // Signals to itself, as by abort.
    const auto self = static_cast<scmp_datum_t>(::getpid());
    filter.allowIf("kill", equals(0, self));
    filter.allowIf("tgkill", equals(0, self));
    // Threads, but no processes. The flags of clone3 are in memory, which a filter cannot read; without it
    // the C library uses clone.
    const unsigned flags = 0;
    filter.allowIf("clone", masked(flags, CLONE_THREAD, CLONE_THREAD));
    filter.refuseIf(EPERM, "clone", masked(flags, CLONE_THREAD, 0));
    return filter.load() ? SandboxEntry::entered : SandboxEntry::refused;
}

} // namespace tallyfold::reader
