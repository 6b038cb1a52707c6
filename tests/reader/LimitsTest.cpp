#include "reader/Limits.h"

#include "files/UnderSanitizer.h"
#include "tests/reader/Child.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tallyfold::reader {

using tests::ChildEnd;
using tests::inChild;
using tests::TemporaryFolder;

namespace {

constexpr int refused = 255;

/// What `work` gives in a child that has limited itself.
ChildEnd limited(const std::function<int()> &work)
{
    return inChild([&] { return limitResources() ? work() : refused; });
}

int errorOf(ssize_t result)
{
    return result < 0 ? errno : 0;
}

} // namespace

TEST(Limits, NothingIsWrittenToAFileThatWasOpenBefore)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "file", "");
    const int file = ::open((folder / "file").c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(file, 0);
    EXPECT_EQ(limited([&] { return errorOf(::write(file, "a", 1)); }), (ChildEnd{EFBIG, 0}));
    EXPECT_EQ(tests::readFile(folder / "file"), "");
    EXPECT_EQ(inChild([&] { return errorOf(::write(file, "a", 1)); }), (ChildEnd{0, 0}));
    EXPECT_EQ(::close(file), 0);
}

TEST(Limits, AddressesAreAGigabyte)
{
    const auto error = [](std::size_t size) {
        return ::mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) == MAP_FAILED ? errno : 0;
    };
    const int tooMuch = isUnderSanitizer ? 0 : ENOMEM; // Sanitizers need all they can get.
    EXPECT_EQ(limited([&] { return error(std::size_t{1} << 30U); }), (ChildEnd{tooMuch, 0}));
    EXPECT_EQ(limited([&] { return error(std::size_t{1} << 28U); }), (ChildEnd{0, 0}));
    EXPECT_EQ(inChild([&] { return error(std::size_t{1} << 30U); }), (ChildEnd{0, 0}));
}

TEST(Limits, ThereIsNothingToRaiseThemTo)
{
    const auto hardLimit = [](auto resource) {
        rlimit limits{};
        return ::getrlimit(resource, &limits) == 0 ? static_cast<int>(std::min<rlim_t>(limits.rlim_max, 100))
                                                   : refused;
    };
    EXPECT_EQ(limited([&] { return hardLimit(RLIMIT_FSIZE); }), (ChildEnd{0, 0}));
    EXPECT_EQ(limited([&] { return hardLimit(RLIMIT_CORE); }), (ChildEnd{0, 0}));
}

TEST(Limits, ProgramsGiveNoPrivilegesAnyMore)
{
    const auto hasNone = [] { return ::prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0); };
    EXPECT_EQ(limited(hasNone), (ChildEnd{1, 0}));
}

TEST(Limits, TheProcessorIsForAnHour)
{
    const auto minutes = [] {
        rlimit limits{};
        return ::getrlimit(RLIMIT_CPU, &limits) == 0 ? static_cast<int>(limits.rlim_max / 60) : refused;
    };
    EXPECT_EQ(limited(minutes), (ChildEnd{60, 0}));
}

} // namespace tallyfold::reader
