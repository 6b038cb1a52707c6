#include "pdf/source/FileInput.h"

#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyfold::pdf {

using tests::TemporaryFolder;
using tests::writeFile;

namespace {

/// Longer than all the blocks that are kept, every byte telling where it stands.
std::string longText()
{
    std::string text;
    while (text.size() < 3'000'000) {
        text += std::to_string(text.size()) + ' ';
    }
    return text;
}

/// The file at `path`, which is there.
std::shared_ptr<FileInput> opened(const std::filesystem::path &path,
                                  std::chrono::nanoseconds cpuTimeLimit = FileInput::defaultCpuTimeLimit)
{
    std::error_code error;
    std::shared_ptr<FileInput> input = FileInput::open(path, error, cpuTimeLimit);
    EXPECT_FALSE(error) << error.message();
    return input;
}

/// Why there is no input for `path`.
std::error_code refusalOf(const std::filesystem::path &path)
{
    std::error_code error;
    EXPECT_EQ(FileInput::open(path, error), nullptr);
    return error;
}

} // namespace

TEST(FileInput, ReadsTheSameBytesInAnyOrder)
{
    const TemporaryFolder folder;
    const std::string text = longText();
    writeFile(folder / "a", text);
    const auto input = opened(folder / "a");
    ASSERT_TRUE(input);
    EXPECT_EQ(input->size(), static_cast<qpdf_offset_t>(text.size()));
    for (const std::size_t offset : {2'999'000UL, 0UL, 65'530UL, 1'500'000UL, 65'536UL, 131'071UL, 7UL}) {
        std::string part(700, '\0');
        input->seek(static_cast<qpdf_offset_t>(offset), SEEK_SET);
        ASSERT_EQ(input->read(part.data(), part.size()), part.size());
        EXPECT_EQ(part, text.substr(offset, part.size()));
        EXPECT_EQ(input->tell(), static_cast<qpdf_offset_t>(offset + part.size()));
    }
}

TEST(FileInput, AReadAtTheEndStandsAtTheEnd)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", "abc");
    const auto input = opened(folder / "a");
    char buffer[8];
    EXPECT_EQ(input->read(buffer, sizeof buffer), 3U);
    EXPECT_EQ(input->read(buffer, sizeof buffer), 0U);
    EXPECT_EQ(input->getLastOffset(), 3);
    input->unreadCh('c');
    EXPECT_EQ(input->read(buffer, 1), 1U);
    EXPECT_EQ(buffer[0], 'c');
}

TEST(FileInput, LineEndsAreFoundAcrossBlocks)
{
    const TemporaryFolder folder;
    const std::string line(65'535, 'x');
    writeFile(folder / "a", line + "\r\n\nrest");
    const auto input = opened(folder / "a");
    EXPECT_EQ(input->findAndSkipNextEOL(), 65'535);
    EXPECT_EQ(input->tell(), 65'538);
    EXPECT_EQ(input->findAndSkipNextEOL(), 65'542);
    EXPECT_EQ(input->tell(), 65'542);
}

TEST(FileInput, OnlyARegularFileIsOpened)
{
    const TemporaryFolder folder;
    EXPECT_EQ(refusalOf(folder.path()), std::errc::is_a_directory);
    EXPECT_EQ(refusalOf(folder / "missing"), std::errc::no_such_file_or_directory);
    ASSERT_EQ(mkfifo((folder / "pipe.pdf").c_str(), 0600), 0);
    EXPECT_EQ(refusalOf(folder / "pipe.pdf"), std::errc::not_supported);
}

TEST(FileInput, AReadThatFailsIsRemembered)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", longText());
    const auto input = opened(folder / "a");
    char byte = 0;
    EXPECT_EQ(input->read(&byte, 1), 1U);
    EXPECT_FALSE(input->failure());
    const files::Descriptor unreadable(::open((folder / "a").c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_GE(::dup2(unreadable.number(), input->descriptor()), 0);
    input->seek(1'000'000, SEEK_SET);
    EXPECT_THROW((void)input->read(&byte, 1), std::system_error);
    EXPECT_EQ(input->failure(), std::errc::bad_file_descriptor);
    EXPECT_FALSE(input->hasChanged());
}

TEST(FileInput, AFileWrittenToSinceItWasOpenedHasChanged)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", "abc");
    const auto input = opened(folder / "a");
    EXPECT_FALSE(input->hasChanged());
    writeFile(folder / "a", "abcd");
    EXPECT_TRUE(input->hasChanged());
}

TEST(FileInput, BlankLinesAreSkippedWithTheEndOfTheirFirst)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", std::string("one \r\n \n\0\t\f\r  two\n", 18));
    const auto input = opened(folder / "a");
    EXPECT_EQ(input->findAndSkipNextEOL(), 4);
    EXPECT_EQ(input->tell(), 14);
    EXPECT_EQ(input->findAndSkipNextEOL(), 17);
    EXPECT_EQ(input->tell(), input->size());
}

TEST(FileInput, AFileIsNotReadAgainAndAgainForEver)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", longText());
    const auto input = opened(folder / "a");
    std::string bytes(static_cast<std::size_t>(input->size()), '\0');
    int times = 0;
    EXPECT_THROW(
        for (; times < 100'000; ++times) {
            input->rewind();
            (void)input->read(bytes.data(), bytes.size());
        },
        std::runtime_error);
    EXPECT_TRUE(input->isExhausted());
    EXPECT_GT(times, 50);
    EXPECT_LT(times, 1000);
    input->rewind();
    EXPECT_THROW((void)input->findAndSkipNextEOL(), std::runtime_error);
}

TEST(FileInput, AFileIsNotReadForEver)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", longText());
    std::string bytes(2'000'000, '\0');
    const auto patient = opened(folder / "a");
    EXPECT_EQ(patient->read(bytes.data(), bytes.size()), bytes.size());
    const auto impatient = opened(folder / "a", -FileInput::defaultCpuTimeLimit);
    EXPECT_THROW((void)impatient->read(bytes.data(), bytes.size()), std::runtime_error);
    EXPECT_TRUE(impatient->isExhausted());
}

} // namespace tallyfold::pdf
