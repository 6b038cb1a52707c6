#include "pdf/source/FileInput.h"

#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

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

} // namespace

TEST(FileInput, ReadsTheSameBytesInAnyOrder)
{
    const TemporaryFolder folder;
    const std::string text = longText();
    writeFile(folder / "a", text);
    const auto input = FileInput::open(folder / "a");
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
    const auto input = FileInput::open(folder / "a");
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
    const auto input = FileInput::open(folder / "a");
    EXPECT_EQ(input->findAndSkipNextEOL(), 65'535);
    EXPECT_EQ(input->tell(), 65'538);
    EXPECT_EQ(input->findAndSkipNextEOL(), 65'542);
    EXPECT_EQ(input->tell(), 65'542);
}

TEST(FileInput, OnlyARegularFileIsOpened)
{
    const TemporaryFolder folder;
    EXPECT_EQ(FileInput::open(folder.path()), nullptr);
    EXPECT_EQ(FileInput::open(folder / "missing"), nullptr);
    ASSERT_EQ(mkfifo((folder / "pipe.pdf").c_str(), 0600), 0);
    EXPECT_EQ(FileInput::open(folder / "pipe.pdf"), nullptr);
}

TEST(FileInput, AFileWrittenToSinceItWasOpenedHasChanged)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", "abc");
    const auto input = FileInput::open(folder / "a");
    EXPECT_FALSE(input->hasChanged());
    writeFile(folder / "a", "abcd");
    EXPECT_TRUE(input->hasChanged());
}

TEST(FileInput, BlankLinesAreSkippedWithTheEndOfTheirFirst)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", std::string("one \r\n \n\0\t\f\r  two\n", 18));
    const auto input = FileInput::open(folder / "a");
    EXPECT_EQ(input->findAndSkipNextEOL(), 4);
    EXPECT_EQ(input->tell(), 14);
    EXPECT_EQ(input->findAndSkipNextEOL(), 17);
    EXPECT_EQ(input->tell(), input->size());
}

TEST(FileInput, AFileIsNotReadAgainAndAgainForEver)
{
    const TemporaryFolder folder;
    writeFile(folder / "a", longText());
    const auto input = FileInput::open(folder / "a");
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
    const auto patient = FileInput::open(folder / "a");
    EXPECT_EQ(patient->read(bytes.data(), bytes.size()), bytes.size());
    const auto impatient = FileInput::open(folder / "a", -FileInput::longest);
    EXPECT_THROW((void)impatient->read(bytes.data(), bytes.size()), std::runtime_error);
    EXPECT_TRUE(impatient->isExhausted());
}

} // namespace tallyfold::pdf
