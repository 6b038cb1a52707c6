#include "files/Descriptor.h"

#include "files/ExclusiveMove.h"
#include "files/FileCalls.h"
#include "files/FileSink.h"
#include "files/WrittenFile.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace tallyfold::files {

namespace {

/// Calls of a program that was started without its three standard files: the first descriptor is 0.
class LowestDescriptor final : public FileCalls {
public:
    int openAt(int, const char *, int flags, mode_t) override
    {
        m_flags = flags;
        return 0;
    }
    ssize_t write(int, const char *, std::size_t count) override
    {
        return m_takesNothing ? 0 : static_cast<ssize_t>(count);
    }
    ssize_t read(int, char *, std::size_t) override
    {
        return 0;
    }
    ssize_t copyRange(int, off_t, int, std::size_t) override
    {
        return 1;
    }
    int syncData(int) override
    {
        return 0;
    }
    int unlink(int, const char *) override
    {
        return 0;
    }
    int close(int descriptor) override
    {
        m_closed.push_back(descriptor);
        return 0;
    }

    int m_flags = 0;
    bool m_takesNothing = false;
    std::vector<int> m_closed;
};

} // namespace

TEST(Descriptor, OfAFileIsKeptFromOtherProgramsAndWaitsForNobody)
{
    const tests::TemporaryFolder folder;
    tests::writeFile(folder / "a", "x");
    const Descriptor file = Descriptor::ofFile(folder / "a");
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ(::fcntl(file.number(), F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(::fcntl(file.number(), F_GETFL) & (O_ACCMODE | O_NONBLOCK), O_RDONLY | O_NONBLOCK);
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    EXPECT_TRUE(Descriptor::ofFile(folder / "fifo").isOpen()) << "though nobody writes to it";
    EXPECT_FALSE(Descriptor::ofFile(folder / "gone").isOpen());
}

TEST(Descriptor, IsClosedWhenItGoesAndMovesAlone)
{
    const tests::TemporaryFolder folder;
    tests::writeFile(folder / "a", "x");
    int number = -1;
    {
        Descriptor first = Descriptor::ofFile(folder / "a");
        number = first.number();
        const Descriptor second(std::move(first));
        EXPECT_EQ(second.number(), number);
        EXPECT_GE(::fcntl(number, F_GETFD), 0);
    }
    EXPECT_EQ(::fcntl(number, F_GETFD), -1);
}

TEST(FileSink, TheLowestDescriptorIsOneLikeAnyOther)
{
    LowestDescriptor calls;
    std::error_code refusal;
    {
        const auto sink = FileSink::create(AT_FDCWD, "a", calls, refusal);
        ASSERT_TRUE(sink);
        EXPECT_FALSE(refusal);
        EXPECT_EQ(calls.m_flags, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC);
    }
    EXPECT_EQ(calls.m_closed, std::vector<int>{0});
}

TEST(FileSink, AFileThatTakesNothingHasFailed)
{
    LowestDescriptor calls;
    calls.m_takesNothing = true;
    FileSink sink(0, calls);
    const std::vector<char> most(20 * 1024, 'x');
    EXPECT_TRUE(sink.write(most)) << "it is held back";
    EXPECT_FALSE(sink.write(most));
    EXPECT_EQ(sink.failure(), std::error_code(EIO, std::generic_category()));
    calls.m_takesNothing = false;
    EXPECT_FALSE(sink.write(most)) << "the first failure stays";
    EXPECT_EQ(sink.copyFrom(5, 0, 3), 0U);
    EXPECT_FALSE(sink.finish());
}

TEST(FileSink, BytesOfAFileMayComeOneByOne)
{
    LowestDescriptor calls;
    FileSink sink(0, calls);
    EXPECT_EQ(sink.copyFrom(5, 0, 3), 3U);
    EXPECT_EQ(sink.size(), 3U);
}

TEST(ExclusiveMove, TheLowestDescriptorIsCopiedFrom)
{
    LowestDescriptor calls;
    EXPECT_EQ(ExclusiveMove::byCopying(calls, AT_FDCWD, "a", "b"), 0);
    EXPECT_EQ(calls.m_closed, (std::vector<int>{0, 0}));
}

TEST(WrittenFile, IsOpenedAsItselfAndForNoOtherProgram)
{
    LowestDescriptor calls;
    {
        const auto file = WrittenFile::open(AT_FDCWD, "a", 1, calls);
        ASSERT_TRUE(file);
        EXPECT_EQ(calls.m_flags, O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    }
    EXPECT_EQ(calls.m_closed, std::vector<int>{0});
}

TEST(FileCalls, WhatIsNotOpenCannotBeBroughtToTheDisk)
{
    FileCalls &calls = FileCalls::system();
    for (const auto sync : {&FileCalls::syncData, &FileCalls::sync}) {
        errno = 0;
        EXPECT_EQ((calls.*sync)(-1), -1);
        EXPECT_EQ(errno, EBADF);
    }
}

} // namespace tallyfold::files
