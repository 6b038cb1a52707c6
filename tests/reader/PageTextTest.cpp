#include "reader/PopplerReader.h"

#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vector>

namespace tallyfold::reader {

using pdf::Rect;
using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;

namespace {

/// A page of 400 by 300 points whose corner lies at 100, 50, of which 10 to 40 points are cropped at each
/// side.
std::unique_ptr<LocalReader> readerOf(const TemporaryFolder &folder, int rotate, const std::string &content)
{
    PdfBuilder builder;
    const int font = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    const int other = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica-Bold>>");
    builder.addPage("/MediaBox[100 50 500 350]/CropBox[110 70 470 310]/Rotate " + std::to_string(rotate) +
                    "/Resources<</Font<</F " + reference(font) + "/B " + reference(other) + ">>>>/Contents " +
                    reference(builder.addStream("", content)));
    tests::writeFile(folder / "a.pdf", builder.file());
    return openWithPoppler(folder / "a.pdf");
}

std::string shown(const std::string &text, int x, int y, const std::string &font = "F")
{
    return "BT /" + font + " 12 Tf " + std::to_string(x) + ' ' + std::to_string(y) + " Td (" + text +
           ") Tj ET ";
}

QString textIn(LocalReader &reader, const Rect &area)
{
    return reader.textIn(0, std::array{area}).value_or(std::vector<QString>(1)).at(0);
}

/// Without white space, which may be there or not.
QString quickTextIn(LocalReader &reader, const Rect &area)
{
    return reader.quickTextIn(0, area).value_or(QString()).remove(u' ').remove(u'\n');
}

class EveryTurn : public testing::TestWithParam<int> {};

constexpr Rect wholePage{100, 50, 500, 350};

} // namespace

TEST(QuickText, IsInTheOrderOfDrawing)
{
    const TemporaryFolder folder;
    const auto reader = readerOf(folder, 0, shown("lower", 150, 100) + shown("upper", 150, 200));
    EXPECT_EQ(quickTextIn(*reader, wholePage), QStringLiteral("lowerupper"));
    EXPECT_EQ(quickTextIn(*reader, {200, 200, 200, 200}), QString());
}

TEST_P(EveryTurn, AWordIsWhereItWasWritten)
{
    const TemporaryFolder folder;
    struct Place {
        const char *word;
        int x;
        int y;
    };
    const std::vector<Place> places{
        {"one", 120, 80}, {"two", 400, 90}, {"three", 130, 280}, {"four", 390, 290}, {"five", 250, 200}};
    std::string content;
    for (const Place &place : places) {
        content += shown(place.word, place.x, place.y);
    }
    const auto reader = readerOf(folder, GetParam(), content);
    ASSERT_TRUE(reader);
    for (const Place &place : places) {
        const double x = place.x;
        const double y = place.y;
        EXPECT_EQ(textIn(*reader, {x - 5, y - 5, x + 40, y + 15}), QString::fromLatin1(place.word));
        EXPECT_EQ(quickTextIn(*reader, {x - 5, y - 5, x + 40, y + 15}), QString::fromLatin1(place.word));
        EXPECT_EQ(quickTextIn(*reader, {x - 45, y - 5, x - 1, y + 15}), QString()) << place.word;
        EXPECT_EQ(textIn(*reader, {x - 45, y - 5, x - 1, y + 15}), QString()) << place.word;
        EXPECT_EQ(textIn(*reader, {x - 5, y + 15, x + 40, y + 35}), QString()) << place.word;
        EXPECT_EQ(textIn(*reader, {x - 5, y - 25, x + 40, y - 5}), QString()) << place.word;
    }
}

TEST_P(EveryTurn, WordsOfALineAreJoinedByASpaceHoweverFarApart)
{
    const TemporaryFolder folder;
    const auto reader = readerOf(folder, GetParam(),
                                 shown("left", 120, 200) + shown("right", 148, 200) + shown("far", 400, 200));
    ASSERT_TRUE(reader);
    EXPECT_EQ(textIn(*reader, wholePage), QStringLiteral("left right far"));
}

TEST_P(EveryTurn, ANarrowSpaceIsOneWhereTheTextHasIt)
{
    const TemporaryFolder folder;
    // A little more than a tenth of the size, and less than a tenth of the height of a line.
    const auto reader = readerOf(folder, GetParam(), "BT /F 10 Tf -1.73 Tw 200 200 Td (ABC 000001) Tj ET ");
    ASSERT_TRUE(reader);
    EXPECT_EQ(textIn(*reader, wholePage), QStringLiteral("ABC 000001"));
}

TEST_P(EveryTurn, LinesAreJoinedByALineFeed)
{
    const TemporaryFolder folder;
    const auto reader = readerOf(folder, GetParam(), shown("upper", 120, 200) + shown("lower", 120, 186));
    ASSERT_TRUE(reader);
    EXPECT_EQ(textIn(*reader, wholePage), QStringLiteral("upper\nlower"));
}

TEST_P(EveryTurn, AWordWhoseFontChangesStaysOne)
{
    const TemporaryFolder folder;
    const auto reader =
        readerOf(folder, GetParam(), "BT /F 12 Tf 120 200 Td (ABC) Tj /B 12 Tf (0001) Tj ET ");
    ASSERT_TRUE(reader);
    EXPECT_EQ(textIn(*reader, wholePage), QStringLiteral("ABC0001"));
}

TEST_P(EveryTurn, OnlyTheGlyphsInAnAreaAreGiven)
{
    const TemporaryFolder folder;
    const auto reader = readerOf(folder, GetParam(), "BT /F 10 Tf 200 200 Td 5 Tc (iiiiiiii) Tj ET ");
    ASSERT_TRUE(reader);
    // Each takes 2.22 points and 5 between them.
    const auto countIn = [&reader](const Rect &area) { return textIn(*reader, area).count(u'i'); };
    EXPECT_EQ(countIn({200, 190, 200 + 3.5 * 7.22, 220}), 4);
    EXPECT_EQ(countIn({200 + 4.5 * 7.22, 190, 300, 220}), 3);
    EXPECT_EQ(countIn({200 + 1.5 * 7.22, 190, 200 + 3.5 * 7.22, 220}), 2);
    // Their boxes reach from some 2 points below the line to some 7 above.
    EXPECT_EQ(countIn({190, 201, 300, 205}), 8);
    EXPECT_EQ(countIn({190, 205, 300, 220}), 0);
    EXPECT_EQ(countIn({190, 190, 300, 200}), 0);
}

TEST_P(EveryTurn, AGlyphIsWhereItsMiddleIs)
{
    const TemporaryFolder folder;
    const auto reader = readerOf(folder, GetParam(), "BT /F 10 Tf 200 200 Td (iliil) Tj ET ");
    ASSERT_TRUE(reader);
    constexpr double width = 2.22; // Of each.
    const auto between = [&](double first, double last) {
        return textIn(*reader, {200 + first * width, 190, 200 + last * width, 220}).toStdString();
    };
    EXPECT_EQ(between(-1, 6), "iliil");
    EXPECT_EQ(between(0.4, 4.6), "iliil");
    EXPECT_EQ(between(0.6, 4.4), "lii");
    EXPECT_EQ(between(1.6, 3.4), "i");
    EXPECT_EQ(between(0.6, 2.6), "li");
    EXPECT_EQ(between(0.6, 1.4), "");
}

INSTANTIATE_TEST_SUITE_P(PageText, EveryTurn, testing::Values(0, 90, 180, 270));

TEST(PageSizes, WhatIsWrongWithAFileIsNotPrinted)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "a.pdf", "%PDF-1.7\nno file of any kind");
    testing::internal::CaptureStderr();
    EXPECT_EQ(openWithPoppler(folder / "a.pdf"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(PageSizes, TheCropBoxIsInThePagesOwnCoordinates)
{
    const TemporaryFolder folder;
    const auto reader = readerOf(folder, 90, "");
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->cropBox(0), (Rect{110, 70, 470, 310}));
    EXPECT_EQ(reader->cropBox(1), std::nullopt);
    EXPECT_EQ(reader->cropBox(-1), std::nullopt);
    EXPECT_EQ(reader->mediaSize(0), (pdf::Size{400, 300}));
    EXPECT_EQ(reader->mediaSize(1), std::nullopt);
    EXPECT_EQ(reader->mediaSize(-1), std::nullopt);
}

TEST(PagePictures, WhatCannotBeDrawnIsRefused)
{
    const TemporaryFolder folder;
    const auto reader = readerOf(folder, 0, "");
    ASSERT_TRUE(reader);
    std::vector<std::uint8_t> pixels(4 * 6 * 5);
    EXPECT_TRUE(reader->renderInto(pixels, 0, 6, 5, 1));
    EXPECT_FALSE(reader->renderInto(pixels, 1, 6, 5, 1));
    EXPECT_FALSE(reader->renderInto(pixels, 0, 6, 6, 1));
    EXPECT_FALSE(reader->renderInto(pixels, 0, 5, 5, 1));
    for (const double scale :
         {0.0, -1.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(reader->renderInto(pixels, 0, 6, 5, scale)) << scale;
    }
}

TEST(PagePictures, AHundredMillionPixelsAreTheMost)
{
    EXPECT_EQ(pictureBytes(10'000, 10'000), std::size_t{400'000'000});
    EXPECT_EQ(pictureBytes(10'001, 10'000), std::nullopt);
    EXPECT_EQ(pictureBytes(1, 1), std::size_t{4});
    EXPECT_EQ(pictureBytes(0, 1), std::nullopt);
    EXPECT_EQ(pictureBytes(1, 0), std::nullopt);
}

TEST(PagePictures, AreScaledAlikeBothWays)
{
    const TemporaryFolder folder;
    // The lower left quarter of what is not cropped.
    const auto reader = readerOf(folder, 0, "1 0 0 rg 110 70 180 120 re f");
    ASSERT_TRUE(reader);
    for (const double scale : {0.5, 2.0}) {
        const int width = static_cast<int>(360 * scale);
        const int height = static_cast<int>(240 * scale);
        std::vector<std::uint8_t> pixels(static_cast<std::size_t>(4 * width * height));
        ASSERT_TRUE(reader->renderInto(pixels, 0, width, height, scale));
        const auto isRed = [&](int column, int row) {
            return pixels[static_cast<std::size_t>(4 * (row * width + column)) + 1] < 128;
        };
        for (const int fromEdge : {-2, 1}) {
            const int column = width / 2 - 1 - fromEdge;
            const int row = height / 2 + fromEdge;
            EXPECT_EQ(isRed(column, height - 1), fromEdge > 0) << scale << ", " << fromEdge;
            EXPECT_EQ(isRed(0, row), fromEdge > 0) << scale << ", " << fromEdge;
        }
    }
}

TEST(PagePictures, EveryColourKeepsItsPlace)
{
    const TemporaryFolder folder;
    const auto reader = readerOf(folder, 0, "1 0.6 0.2 rg 0 0 600 600 re f");
    ASSERT_TRUE(reader);
    std::vector<std::uint8_t> pixels(4 * 6 * 5);
    ASSERT_TRUE(reader->renderInto(pixels, 0, 6, 5, 1));
    for (std::size_t pixel = 0; pixel < pixels.size(); pixel += 4) {
        const std::array<int, 4> color{pixels[pixel], pixels[pixel + 1], pixels[pixel + 2],
                                       pixels[pixel + 3]};
        EXPECT_EQ(color, (std::array<int, 4>{255, 153, 51, 255})) << pixel;
    }
}

} // namespace tallyfold::reader
