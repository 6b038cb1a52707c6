#include "files/FileStatus.h"

#include "files/Descriptor.h"
#include "files/FileCalls.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>

namespace tallyfold::files {

using tests::TemporaryFolder;
using tests::writeFile;

TEST(FileStatus, AFileIsTheSameByItsPathAndOpen)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", "abc");
    std::filesystem::create_symlink("a", folder / "link");
    const auto status = FileStatus::of(folder / "a");
    ASSERT_TRUE(status);
    EXPECT_EQ(status->kind, FileStatus::Kind::regular);
    EXPECT_EQ(status->size, 3);
    EXPECT_NE(status->inode, 0U);
    EXPECT_EQ(FileStatus::of(folder / "link"), status);
    std::error_code error;
    EXPECT_EQ(FileStatus::of(Descriptor::ofFile(folder / "a").number(), error), status);
    EXPECT_FALSE(error);
}

TEST(FileStatus, TimesAreThoseOfTheFileSystem)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", "abc");
    const std::array<timespec, 2> times{{{1, 2}, {1'234'567'890, 123'456'789}}};
    ASSERT_EQ(::utimensat(AT_FDCWD, (folder / "a").c_str(), times.data(), 0), 0);
    const auto status = FileStatus::of(folder / "a");
    ASSERT_TRUE(status);
    EXPECT_EQ(status->modified.seconds, 1'234'567'890);
    EXPECT_EQ(status->modified.nanoseconds, 123'456'789);
    EXPECT_GT(status->changed.seconds, status->modified.seconds);
}

TEST(FileStatus, WhatIsNoFileIsToldApart)
{
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto kindOf = [&folder](const char *name) {
        return FileStatus::of(folder / name).value_or(FileStatus()).kind;
    };
    EXPECT_EQ(kindOf("pipe"), FileStatus::Kind::other);
    EXPECT_EQ(kindOf("."), FileStatus::Kind::folder);
    EXPECT_EQ(FileStatus::of(folder / "missing"), std::nullopt);
    std::error_code error;
    EXPECT_EQ(FileStatus::of(-1, error), std::nullopt);
    EXPECT_EQ(error, std::errc::bad_file_descriptor);
}

TEST(FileCalls, ReadingFillsWhatThereIs)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", "abcdef");
    const Descriptor file = Descriptor::ofFile(folder / "a");
    std::array<char, 4> bytes{};
    std::error_code error;
    EXPECT_EQ(readUpTo(FileCalls::system(), file.number(), 1, bytes, error), 4U);
    EXPECT_EQ(std::string_view(bytes.data(), 4), "bcde");
    EXPECT_EQ(readUpTo(FileCalls::system(), file.number(), 4, bytes, error), 2U);
    EXPECT_EQ(readUpTo(FileCalls::system(), file.number(), 9, bytes, error), 0U);
    EXPECT_FALSE(error);
    EXPECT_EQ(readUpTo(FileCalls::system(), -1, 0, bytes, error), 0U);
    EXPECT_EQ(error, std::errc::bad_file_descriptor);
}

TEST(FileCalls, OnlyFoldersAreOpenedAsFolders)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", "abc");
    std::error_code error;
    const Descriptor opened(openFolder(FileCalls::system(), folder / ".", error));
    EXPECT_TRUE(opened.isOpen());
    EXPECT_FALSE(error);
    EXPECT_FALSE(syncFolder(FileCalls::system(), opened.number()));
    EXPECT_EQ(openFolder(FileCalls::system(), folder / "a", error), -1);
    EXPECT_EQ(error, std::errc::not_a_directory);
    EXPECT_EQ(syncFolder(FileCalls::system(), -1), std::errc::bad_file_descriptor);
}

} // namespace tallyfold::files
