#include "files/FileSink.h"

#include "pdf/source/FileInput.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>

namespace tallyfold::files {

namespace {

using tests::readFile;
using tests::TemporaryFolder;

/// Calls on a disk that takes a few bytes at a time and has room for `room` of them.
class SmallDisk : public FileCalls {
public:
    std::size_t room = std::string::npos;
    bool interrupted = false;
    int syncError = 0;
    int closeError = 0;
    int syncs = 0;
    int copyError = 0;
    int copies = 0;

    ssize_t copyRange(int from, off_t offset, int to, std::size_t count) override
    {
        ++copies;
        m_turn = !m_turn;
        if (copyError != 0 || (interrupted && m_turn)) {
            errno = copyError != 0 ? copyError : EINTR;
            return -1;
        }
        return FileCalls::copyRange(from, offset, to, std::min(count, std::size_t{100'000}));
    }
    ssize_t write(int descriptor, const char *bytes, std::size_t count) override
    {
        m_turn = !m_turn;
        if (interrupted && m_turn) {
            errno = EINTR;
            return -1;
        }
        if (room == 0) {
            errno = ENOSPC;
            return -1;
        }
        const ssize_t written =
            FileCalls::write(descriptor, bytes, std::min({count, room, std::size_t{100'000}}));
        room -= static_cast<std::size_t>(written);
        return written;
    }
    int syncData(int descriptor) override
    {
        ++syncs;
        if (syncError != 0) {
            errno = syncError;
            return -1;
        }
        return FileCalls::syncData(descriptor);
    }
    int close(int descriptor) override
    {
        const int closed = FileCalls::close(descriptor);
        if (closeError != 0) {
            errno = closeError;
            return -1;
        }
        return closed;
    }

private:
    bool m_turn = false;
};

std::string pattern(std::size_t size)
{
    std::string text(size, ' ');
    for (std::size_t index = 0; index < size; ++index) {
        text[index] = static_cast<char>('a' + index % 23);
    }
    return text;
}

std::shared_ptr<pdf::FileInput> opened(const std::filesystem::path &path)
{
    std::error_code error;
    return pdf::FileInput::open(path, error);
}

} // namespace

TEST(FileSink, HoldsEveryByteInOrderWhateverThePiecesAre)
{
    const TemporaryFolder folder;
    const std::string text = pattern(1'500'000);
    std::error_code error;
    auto sink = FileSink::create(folder / "out.pdf", error);
    ASSERT_TRUE(sink);
    std::size_t begin = 0;
    for (const std::size_t size : {1U, 0U, 262'143U, 1U, 262'144U, 600'000U, 7U}) {
        ASSERT_TRUE(sink->write(std::span(text).subspan(begin, size)));
        begin += size;
    }
    ASSERT_TRUE(sink->write(std::span(text).subspan(begin)));
    ASSERT_TRUE(sink->flushToDisk());
    EXPECT_EQ(readFile(folder / "out.pdf"), text);
}

TEST(FileSink, CreatesNothingOverAnExistingNameOrADanglingLink)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "there.pdf", "kept");
    std::filesystem::create_symlink(folder / "nowhere", folder / "link.pdf");
    for (const char *name : {"there.pdf", "link.pdf"}) {
        std::error_code error;
        EXPECT_FALSE(FileSink::create(folder / name, error)) << name;
        EXPECT_EQ(error, std::errc::file_exists) << name;
    }
    EXPECT_EQ(readFile(folder / "there.pdf"), "kept");
    EXPECT_FALSE(std::filesystem::exists(folder / "nowhere"));
}

TEST(FileSink, ShortAndInterruptedWritesAreContinued)
{
    const TemporaryFolder folder;
    SmallDisk disk;
    disk.interrupted = true;
    const std::string text = pattern(700'000);
    FileSink sink(disk.openAt(AT_FDCWD, (folder / "out.pdf").c_str(), O_WRONLY | O_CREAT, 0666), disk);
    ASSERT_TRUE(sink.write(text));
    ASSERT_TRUE(sink.flushToDisk());
    EXPECT_EQ(readFile(folder / "out.pdf"), text);
}

TEST(FileSink, BytesOfAFileGetThereInTheirOrderAmongOthers)
{
    const TemporaryFolder folder;
    const std::string text = pattern(700'000);
    tests::writeFile(folder / "in.pdf", text);
    const auto in = opened(folder / "in.pdf");
    SmallDisk disk;
    disk.interrupted = true;
    FileSink sink(disk.openAt(AT_FDCWD, (folder / "out.pdf").c_str(), O_WRONLY | O_CREAT, 0666), disk);
    ASSERT_TRUE(sink.write(pattern(1000)));
    EXPECT_EQ(sink.copyFrom(in->descriptor(), 5, 600'000), 600'000U);
    ASSERT_TRUE(sink.write(pattern(10)));
    EXPECT_EQ(sink.size(), 601'010U);
    ASSERT_TRUE(sink.flushToDisk());
    EXPECT_EQ(readFile(folder / "out.pdf"), pattern(1000) + text.substr(5, 600'000) + pattern(10));
}

TEST(FileSink, NoMoreIsCopiedThanThereIs)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "in.pdf", pattern(1000));
    const auto in = opened(folder / "in.pdf");
    std::error_code error;
    const auto sink = FileSink::create(folder / "out.pdf", error);
    ASSERT_TRUE(sink);
    EXPECT_EQ(sink->copyFrom(in->descriptor(), 400, 5000), 600U);
    ASSERT_TRUE(sink->finish());
    EXPECT_EQ(readFile(folder / "out.pdf"), pattern(1000).substr(400));
}

TEST(FileSink, WhatTheSystemCannotCopyIsLeftToTheCaller)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "in.pdf", pattern(1000));
    const auto in = opened(folder / "in.pdf");
    SmallDisk disk;
    disk.copyError = EXDEV;
    FileSink sink(disk.openAt(AT_FDCWD, (folder / "out.pdf").c_str(), O_WRONLY | O_CREAT, 0666), disk);
    EXPECT_EQ(sink.copyFrom(in->descriptor(), 0, 1000), 0U);
    EXPECT_EQ(sink.copyFrom(in->descriptor(), 0, 1000), 0U);
    EXPECT_EQ(disk.copies, 1);
    ASSERT_TRUE(sink.write(pattern(10)));
    ASSERT_TRUE(sink.finish());
    EXPECT_EQ(readFile(folder / "out.pdf"), pattern(10));
}

TEST(FileSink, AFullDiskIsToldWhereItShowsAndRemembered)
{
    const TemporaryFolder folder;
    SmallDisk disk;
    disk.room = 1000;
    FileSink sink(disk.openAt(AT_FDCWD, (folder / "out.pdf").c_str(), O_WRONLY | O_CREAT, 0666), disk);
    ASSERT_TRUE(sink.write(pattern(2000)));
    EXPECT_FALSE(sink.finish());
    EXPECT_EQ(sink.failure(), std::errc::no_space_on_device);
    disk.room = 1'000'000;
    EXPECT_FALSE(sink.write(pattern(10)));
    EXPECT_FALSE(sink.flushToDisk());
    EXPECT_EQ(disk.syncs, 0);
}

TEST(FileSink, AFailedSyncIsAFailureAndNotTriedAgain)
{
    const TemporaryFolder folder;
    SmallDisk disk;
    disk.syncError = EIO;
    FileSink sink(disk.openAt(AT_FDCWD, (folder / "out.pdf").c_str(), O_WRONLY | O_CREAT, 0666), disk);
    ASSERT_TRUE(sink.write(pattern(10)));
    EXPECT_FALSE(sink.flushToDisk());
    disk.syncError = 0;
    EXPECT_FALSE(sink.flushToDisk());
    EXPECT_EQ(disk.syncs, 1);
    EXPECT_EQ(sink.failure(), std::errc::io_error);
}

TEST(FileSink, AFailedCloseIsAFailureButAnInterruptedOneIsNot)
{
    const TemporaryFolder folder;
    SmallDisk disk;
    disk.closeError = EDQUOT;
    FileSink full(disk.openAt(AT_FDCWD, (folder / "full.pdf").c_str(), O_WRONLY | O_CREAT, 0666), disk);
    ASSERT_TRUE(full.write(pattern(10)));
    EXPECT_FALSE(full.flushToDisk());

    disk.closeError = EINTR;
    FileSink interrupted(
        disk.openAt(AT_FDCWD, (folder / "interrupted.pdf").c_str(), O_WRONLY | O_CREAT, 0666), disk);
    ASSERT_TRUE(interrupted.write(pattern(10)));
    EXPECT_TRUE(interrupted.flushToDisk());
}

} // namespace tallyfold::files
