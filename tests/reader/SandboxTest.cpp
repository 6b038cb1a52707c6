#include "reader/Sandbox.h"

#include "files/UnderSanitizer.h"
#include "tests/reader/Child.h"
#include "tests/reader/SandboxThere.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <linux/filter.h>
#include <linux/openat2.h>
#include <linux/seccomp.h>
#include <netinet/in.h>
#include <ostream>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tallyfold::reader {

using tests::ChildEnd;
using tests::inChild;
using tests::TemporaryFolder;

namespace {

constexpr int notEntered = 255;

/// What `work` gives in a child inside the sandbox.
ChildEnd inSandbox(const std::function<int()> &work, int socket = STDIN_FILENO)
{
    return inChild([&] { return enterSandbox(socket) == SandboxEntry::entered ? work() : notEntered; });
}

/// Has the system answer with `error` whoever wants a filter from now on, as do systems that were built
/// without, and surroundings that allow none.
bool answerFilters(int error)
{
    std::array filter{
        sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_seccomp, 3, 0),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_prctl, 0, 3),
        sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)), // Its lower half.
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, PR_SET_SECCOMP, 0, 1),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

int errorOf(long result)
{
    return result < 0 ? errno : 0;
}

/// Where an attempt may leave something.
struct Place {
    TemporaryFolder folder;
    std::string file = (folder / "file").string();   ///< Is there, and has "content".
    std::string other = (folder / "other").string(); ///< Is not there.
    int open = -1;                                   ///< `file`, open to read.

    Place()
    {
        tests::writeFile(file, "content");
        open = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    }
    ~Place()
    {
        ::close(open);
    }
    Place(const Place &) = delete;
    Place &operator=(const Place &) = delete;
};

/// A call that is not to be had inside the sandbox.
struct Attempt {
    const char *name;
    int error; ///< What it is answered with inside.
    int (*work)(const Place &);
};

void PrintTo(const Attempt &attempt, std::ostream *stream)
{
    *stream << attempt.name;
}

class Forbidden : public testing::TestWithParam<Attempt> {};

int opening(const Place &place, int flags)
{
    return errorOf(::open(place.file.c_str(), flags, 0600));
}

int openingAnother(const Place &place, int flags)
{
    return errorOf(::open(place.other.c_str(), flags, 0600));
}

/// Calls with nothing to work on: outside they fail for that reason.
template <typename... Arguments> int plain(long number, Arguments... arguments)
{
    return errorOf(::syscall(number, arguments...));
}

int newProcess(pid_t child)
{
    if (child == 0) {
        ::_exit(0);
    }
    return errorOf(child);
}

const Attempt attempts[] = {
    // Files that are new or changed.
    {"OpenToWrite", EACCES, [](const Place &place) { return opening(place, O_WRONLY); }},
    {"OpenToReadAndWrite", EACCES, [](const Place &place) { return opening(place, O_RDWR); }},
    {"OpenToTruncate", EACCES, [](const Place &place) { return opening(place, O_RDONLY | O_TRUNC); }},
    {"OpenToAppend", EACCES, [](const Place &place) { return opening(place, O_WRONLY | O_APPEND); }},
    {"OpenTheThirdWay", EACCES, [](const Place &place) { return opening(place, O_WRONLY | O_RDWR); }},
    {"OpenToCreate", EACCES, [](const Place &place) { return openingAnother(place, O_RDONLY | O_CREAT); }},
    {"OpenToCreateExclusively", EACCES,
     [](const Place &place) { return openingAnother(place, O_RDWR | O_CREAT | O_EXCL); }},
    {"OpenWithoutName", EACCES,
     [](const Place &place) {
         return errorOf(::open(place.folder.path().c_str(), O_TMPFILE | O_RDWR, 0600));
     }},
    {"OpenAgain", EACCES,
     [](const Place &place) {
         return errorOf(::open(("/proc/self/fd/" + std::to_string(place.open)).c_str(), O_RDWR));
     }},
#if defined(SYS_open)
    {"OldOpen", EACCES,
     [](const Place &place) { return plain(SYS_open, place.file.c_str(), O_WRONLY, 0600); }},
    {"OldCreate", ENOSYS, [](const Place &place) { return plain(SYS_creat, place.other.c_str(), 0600); }},
    {"OldUnlink", ENOSYS, [](const Place &place) { return plain(SYS_unlink, place.file.c_str()); }},
#endif
    {"OpenInTheNewWay", ENOSYS,
     [](const Place &place) {
         open_how how{};
         how.flags = O_RDONLY;
         return plain(SYS_openat2, AT_FDCWD, place.file.c_str(), &how, sizeof how);
     }},
    {"Unlink", ENOSYS,
     [](const Place &place) { return errorOf(::unlinkat(AT_FDCWD, place.file.c_str(), 0)); }},
    {"Rename", ENOSYS,
     [](const Place &place) {
         return errorOf(::renameat(AT_FDCWD, place.file.c_str(), AT_FDCWD, place.other.c_str()));
     }},
    {"RenameInTheNewWay", ENOSYS,
     [](const Place &place) {
         return plain(SYS_renameat2, AT_FDCWD, place.file.c_str(), AT_FDCWD, place.other.c_str(), 0);
     }},
    {"Link", ENOSYS,
     [](const Place &place) { return errorOf(::link(place.file.c_str(), place.other.c_str())); }},
    {"SymbolicLink", ENOSYS,
     [](const Place &place) { return errorOf(::symlink("somewhere", place.other.c_str())); }},
    {"NewFolder", ENOSYS, [](const Place &place) { return errorOf(::mkdir(place.other.c_str(), 0700)); }},
    {"Rights", ENOSYS, [](const Place &place) { return errorOf(::chmod(place.file.c_str(), 0)); }},
    {"RightsOfAnOpenFile", ENOSYS, [](const Place &place) { return errorOf(::fchmod(place.open, 0)); }},
    {"Owner", ENOSYS,
     [](const Place &place) { return errorOf(::chown(place.file.c_str(), ::getuid(), ::getgid())); }},
    {"Truncate", ENOSYS, [](const Place &place) { return errorOf(::truncate(place.file.c_str(), 0)); }},
    {"NewPipe", ENOSYS, [](const Place &place) { return errorOf(::mkfifo(place.other.c_str(), 0600)); }},
    {"Times", ENOSYS,
     [](const Place &place) { return errorOf(::utimensat(AT_FDCWD, place.file.c_str(), nullptr, 0)); }},
    {"Lock", ENOSYS, [](const Place &place) { return plain(SYS_flock, place.open, 1); }},
    // Others on this machine and beyond.
    {"Internet", ENOSYS, [](const Place &) { return errorOf(::socket(AF_INET, SOCK_STREAM, 0)); }},
    {"LocalSocket", ENOSYS, [](const Place &) { return errorOf(::socket(AF_UNIX, SOCK_STREAM, 0)); }},
    {"SocketPair", ENOSYS,
     [](const Place &) {
         std::array<int, 2> sockets{};
         return errorOf(::socketpair(AF_UNIX, SOCK_STREAM, 0, sockets.data()));
     }},
    {"Connect", ENOSYS, [](const Place &) { return plain(SYS_connect, -1, nullptr, 0); }},
    {"Bind", ENOSYS, [](const Place &) { return plain(SYS_bind, -1, nullptr, 0); }},
    {"Listen", ENOSYS, [](const Place &) { return plain(SYS_listen, -1, 1); }},
    {"Accept", ENOSYS, [](const Place &) { return plain(SYS_accept4, -1, nullptr, nullptr, 0); }},
    {"SendTo", ENOSYS, [](const Place &) { return plain(SYS_sendto, -1, "", 0, 0, nullptr, 0); }},
    {"SendThroughAnotherSocket", ENOSYS, [](const Place &) { return plain(SYS_sendmsg, 99, nullptr, 0); }},
    {"SendManyMessages", ENOSYS,
     [](const Place &) { return plain(SYS_sendmmsg, STDIN_FILENO, nullptr, 0, 0); }},
    {"Terminal", ENOSYS, [](const Place &) { return plain(SYS_ioctl, STDIN_FILENO, TIOCSTI, "a"); }},
    {"OwnerOfADescriptor", ENOSYS,
     [](const Place &place) { return errorOf(::fcntl(place.open, F_SETOWN, ::getpid())); }},
    {"Lease", ENOSYS, [](const Place &place) { return errorOf(::fcntl(place.open, F_SETLEASE, F_UNLCK)); }},
    {"ShareMemory", ENOSYS, [](const Place &) { return plain(SYS_memfd_create, "name", 0); }},
    {"SharedSegment", ENOSYS, [](const Place &) { return plain(SYS_shmget, 0, 4096, 0600); }},
    // Programs and processes.
    {"Execute", ENOSYS,
     [](const Place &) {
         std::array<char *, 1> nothing{nullptr};
         return errorOf(::execve("/nowhere", nothing.data(), nothing.data()));
     }},
    {"ExecuteAnOpenFile", ENOSYS,
     [](const Place &place) { return plain(SYS_execveat, place.open, "", nullptr, nullptr, 0); }},
    {"Fork", EPERM, [](const Place &) { return newProcess(::fork()); }},
#if defined(SYS_fork)
    {"OldFork", ENOSYS, [](const Place &) { return newProcess(static_cast<pid_t>(::syscall(SYS_fork))); }},
#endif
    {"Clone", EPERM,
     [](const Place &) { return newProcess(static_cast<pid_t>(::syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0))); }},
    {"CloneInTheNewWay", ENOSYS, [](const Place &) { return plain(SYS_clone3, nullptr, 0); }},
    {"Signal", ENOSYS, [](const Place &) { return errorOf(::kill(::getppid(), 0)); }},
    {"SignalToAll", ENOSYS, [](const Place &) { return plain(SYS_kill, -::getpid(), 0); }},
    {"SignalToAThread", ENOSYS, [](const Place &) { return plain(SYS_tgkill, ::getppid(), ::getppid(), 0); }},
    {"SignalByAnotherName", ENOSYS, [](const Place &) { return plain(SYS_tkill, ::getppid(), 0); }},
    {"SignalWithAValue", ENOSYS,
     [](const Place &) { return plain(SYS_rt_sigqueueinfo, ::getppid(), 0, nullptr); }},
    {"HandleOfAProcess", ENOSYS, [](const Place &) { return plain(SYS_pidfd_open, ::getppid(), 0); }},
    {"FileOfAProcess", ENOSYS, [](const Place &) { return plain(SYS_pidfd_getfd, -1, 0, 0); }},
    {"Trace", ENOSYS, [](const Place &) { return errorOf(::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr)); }},
    {"ReadAProcess", ENOSYS,
     [](const Place &) { return errorOf(::process_vm_readv(::getpid(), nullptr, 0, nullptr, 0, 0)); }},
    {"WriteAProcess", ENOSYS,
     [](const Place &) { return errorOf(::process_vm_writev(::getpid(), nullptr, 0, nullptr, 0, 0)); }},
    {"LimitsOfOthers", ENOSYS,
     [](const Place &) {
         rlimit limits{};
         return errorOf(::prlimit(::getppid(), RLIMIT_CORE, nullptr, &limits));
     }},
    {"LimitsOfItsOwn", ENOSYS,
     [](const Place &) {
         const rlimit none{0, 0};
         return errorOf(::setrlimit(RLIMIT_CORE, &none));
     }},
    {"Priority", ENOSYS, [](const Place &) { return plain(SYS_setpriority, PRIO_PROCESS, 0, 19); }},
    // The system.
    {"ProcessControl", ENOSYS, [](const Place &) { return errorOf(::prctl(PR_SET_DUMPABLE, 1, 0, 0, 0)); }},
    {"AnotherFilter", ENOSYS, [](const Place &) { return plain(SYS_seccomp, 2, 0, nullptr); }},
    {"AnotherRoot", ENOSYS, [](const Place &) { return errorOf(::chroot("/nowhere")); }},
    {"AnotherFolder", ENOSYS, [](const Place &) { return errorOf(::chdir("/")); }},
    {"Mount", ENOSYS, [](const Place &) { return errorOf(::mount("", "/nowhere", "", 0, nullptr)); }},
    {"Unmount", ENOSYS, [](const Place &) { return errorOf(::umount2("/nowhere", 0)); }},
    {"MountInTheNewWay", ENOSYS, [](const Place &) { return plain(SYS_fsopen, nullptr, 0); }},
    {"OwnNamespace", ENOSYS, [](const Place &) { return plain(SYS_unshare, 0); }},
    {"NamespaceOfOthers", ENOSYS, [](const Place &) { return plain(SYS_setns, -1, 0); }},
    {"AnotherUser", ENOSYS, [](const Place &) { return plain(SYS_setuid, ::getuid()); }},
    {"Privileges", ENOSYS, [](const Place &) { return plain(SYS_capset, nullptr, nullptr); }},
    {"Rings", ENOSYS, [](const Place &) { return plain(SYS_io_uring_setup, 1, nullptr); }},
    {"KernelPrograms", ENOSYS, [](const Place &) { return plain(SYS_bpf, 0, nullptr, 0); }},
    {"Keys", ENOSYS, [](const Place &) { return plain(SYS_keyctl, 0, 0, 0, 0, 0); }},
    {"NewKey", ENOSYS, [](const Place &) { return plain(SYS_add_key, nullptr, nullptr, nullptr, 0, 0); }},
    {"PageFaults", ENOSYS, [](const Place &) { return plain(SYS_userfaultfd, 0); }},
    {"Counters", ENOSYS, [](const Place &) { return plain(SYS_perf_event_open, nullptr, 0, -1, -1, 0); }},
    {"Modules", ENOSYS, [](const Place &) { return plain(SYS_init_module, nullptr, 0, nullptr); }},
    {"NewKernel", ENOSYS, [](const Place &) { return plain(SYS_kexec_load, 0, 0, nullptr, 0); }},
    {"Personality", ENOSYS, [](const Place &) { return plain(SYS_personality, 0xffffffffUL); }},
};

} // namespace

TEST_P(Forbidden, CallsFail)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    const Place place;
    const Attempt &attempt = GetParam();
    EXPECT_EQ(inSandbox([&] { return attempt.work(place); }), (ChildEnd{attempt.error, 0}));
    EXPECT_EQ(tests::readFile(place.file), "content");
    EXPECT_EQ(::access(place.other.c_str(), F_OK), -1);
    // It is the sandbox that is in the way.
    const ChildEnd outside = inChild([&] { return attempt.work(place); });
    if (outside.code == attempt.error) {
        GTEST_SKIP() << "the call fails in the sandbox as it has to, but the system here refuses it outside "
                        "as well: whether the "
                        "sandbox would is not seen";
    }
    EXPECT_EQ(outside.signal, 0);
}

INSTANTIATE_TEST_SUITE_P(Sandbox, Forbidden, testing::ValuesIn(attempts),
                         [](const auto &attempt) { return std::string(attempt.param.name); });

TEST(Sandbox, FilesAndFoldersAreRead)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    const Place place;
    const auto reading = [&] {
        std::array<char, 7> bytes{};
        struct stat status {};
        const int file = ::open(place.file.c_str(), O_RDONLY | O_CLOEXEC);
        DIR *folder = ::opendir(place.folder.path().c_str());
        const bool isRead = file >= 0 && ::fstat(file, &status) == 0 && status.st_size == 7 &&
                            ::stat(place.file.c_str(), &status) == 0 &&
                            ::access(place.file.c_str(), R_OK) == 0 && ::read(file, bytes.data(), 3) == 3 &&
                            ::lseek(file, 0, SEEK_SET) == 0 && ::pread(file, bytes.data(), 7, 0) == 7 &&
                            std::string_view(bytes.data(), 7) == "content" &&
                            ::mmap(nullptr, 7, PROT_READ, MAP_PRIVATE, file, 0) != MAP_FAILED;
        const bool isListed = folder != nullptr && ::readdir(folder) != nullptr && ::closedir(folder) == 0;
        std::array<char, 100> self{};
        const bool isFollowed = ::readlink("/proc/self/exe", self.data(), self.size()) > 0;
        return isRead && isListed && isFollowed ? 0 : 1;
    };
    EXPECT_EQ(inSandbox(reading), (ChildEnd{0, 0}));
}

TEST(Sandbox, IsLeftOutWhereTheSystemHasNoFilters)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(inChild([] { return answerFilters(EINVAL) ? static_cast<int>(enterSandbox(0)) : notEntered; }),
              (ChildEnd{static_cast<int>(SandboxEntry::leftOut), 0}));
}

TEST(Sandbox, IsRefusedWhereTheSystemDoesNotLetItIn)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    for (const int error : {EPERM, EACCES}) {
        EXPECT_EQ(
            inChild([&] { return answerFilters(error) ? static_cast<int>(enterSandbox(0)) : notEntered; }),
            (ChildEnd{static_cast<int>(SandboxEntry::refused), 0}));
    }
}

TEST(Sandbox, ThreadsStartAndMemoryGrows)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    const auto working = [] {
        std::vector<char> bytes;
        std::thread thread([&] { bytes.resize(std::size_t{50} << 20U, 'x'); });
        thread.join();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return bytes.back() == 'x' ? 0 : 1;
    };
    EXPECT_EQ(inSandbox(working), (ChildEnd{0, 0}));
}

TEST(Sandbox, ItsSocketIsTheOneThatIsTalkedThrough)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    std::array<int, 2> own{};
    std::array<int, 2> others{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, own.data()), 0);
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, others.data()), 0);
    const auto sending = [](int socket) {
        char byte = 'a';
        iovec part{&byte, 1};
        msghdr head{};
        head.msg_iov = &part;
        head.msg_iovlen = 1;
        return errorOf(::sendmsg(socket, &head, 0));
    };
    EXPECT_EQ(inSandbox([&] { return sending(own[0]); }, own[0]), (ChildEnd{0, 0}));
    EXPECT_EQ(inSandbox([&] { return sending(others[0]); }, own[0]), (ChildEnd{ENOSYS, 0}));
    for (const int socket : {own[0], own[1], others[0], others[1]}) {
        EXPECT_EQ(::close(socket), 0);
    }
}

TEST(Sandbox, AnAbortStillEndsTheProcess)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    const auto aborting = [] {
        ::signal(SIGABRT, SIG_DFL); // Sanitizers have a handler.
        std::abort();
        return 0;
    };
    EXPECT_EQ(inSandbox(aborting), (ChildEnd{-1, SIGABRT}));
}

TEST(Sandbox, HoldsEveryThread)
{
    if (const char *reason = tests::whyThereIsNoSandbox()) {
        GTEST_SKIP() << reason;
    }
    const auto fromAnother = [] {
        int error = 0;
        std::array<int, 2> signal{};
        if (::pipe(signal.data()) != 0) {
            return notEntered;
        }
        std::thread earlier([&] { // Is there before the sandbox is.
            char byte = 0;
            error = ::read(signal[0], &byte, 1) == 1 ? errorOf(::socket(AF_INET, SOCK_STREAM, 0)) : 0;
        });
        const bool isEntered = enterSandbox(STDIN_FILENO) == SandboxEntry::entered;
        const bool isSignalled = ::write(signal[1], "", 1) == 1;
        earlier.join();
        return isEntered && isSignalled ? error : notEntered;
    };
    EXPECT_EQ(inChild(fromAnother), (ChildEnd{ENOSYS, 0}));
}

} // namespace tallyfold::reader
