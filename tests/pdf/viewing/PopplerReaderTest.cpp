#include "pdf/viewing/PageReader.h"

#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <ostream>
#include <string>

namespace tallyfold::pdf {

namespace {

using tests::showText;
using tests::SmallPage;
using tests::smallPdf;
using tests::TemporaryFolder;
using namespace Qt::StringLiterals;

constexpr Rect letter{0, 0, 612, 792};

std::unique_ptr<PageReader> readerOf(const std::vector<SmallPage> &pages)
{
    const std::string bytes = smallPdf(pages);
    return PageReader::open(std::vector<char>(bytes.begin(), bytes.end()));
}

/// The text of the first page in the strips of `depth` at the bottom, top, left and right of `box`.
std::vector<QString> strips(PageReader &reader, const Rect &box, double depth)
{
    const std::array areas{Rect{box.minX, box.minY, box.maxX, box.minY + depth},
                           Rect{box.minX, box.maxY - depth, box.maxX, box.maxY},
                           Rect{box.minX, box.minY, box.minX + depth, box.maxY},
                           Rect{box.maxX - depth, box.minY, box.maxX, box.maxY}};
    return reader.textIn(0, areas).value_or(std::vector<QString>(areas.size()));
}

/// A line of text at an edge of a page that is not upright in the file, so that it is when shown.
struct TurnedPage {
    int rotate;
    std::string textMatrix; ///< Puts the text near the edge that is shown at the bottom.
    std::size_t strip;      ///< That edge in the file: bottom, top, left, right.
};

void PrintTo(const TurnedPage &page, std::ostream *stream)
{
    *stream << "/Rotate " << page.rotate;
}

class TurnedPages : public testing::TestWithParam<TurnedPage> {};

std::array<int, 4> pixelAt(const Bitmap &bitmap, int x, int y)
{
    const auto index = static_cast<std::size_t>(y * bitmap.width + x) * 4;
    return {bitmap.pixels[index], bitmap.pixels[index + 1], bitmap.pixels[index + 2],
            bitmap.pixels[index + 3]};
}

constexpr std::array<int, 4> white{255, 255, 255, 255};
constexpr std::array<int, 4> red{255, 0, 0, 255};

} // namespace

TEST(PopplerReader, ReadsTheTextAtEachEdgeApart)
{
    const auto reader =
        readerOf({{showText(250, 20, "DEF 1234567") + showText(250, 770, "EX-0001") +
                   showText(20, 400, "LEFT") + showText(560, 400, "RIGHT") + showText(280, 400, "MIDDLE")}});
    ASSERT_TRUE(reader);
    const auto texts = strips(*reader, letter, 90);
    EXPECT_EQ(texts, (std::vector{u"DEF 1234567"_s, u"EX-0001"_s, u"LEFT"_s, u"RIGHT"_s}));
}

TEST(PopplerReader, JoinsTheWordsOfALineBySpacesAndLinesByNewlines)
{
    const auto reader =
        readerOf({{showText(30, 40, "CONFIDENTIAL ABC000045") + showText(30, 20, "Page 1 of 3")}});
    ASSERT_TRUE(reader);
    EXPECT_EQ(strips(*reader, letter, 90)[0], u"CONFIDENTIAL ABC000045\nPage 1 of 3"_s);
}

TEST(PopplerReader, AWordWhoseFontChangesStaysOneWord)
{
    const auto reader =
        readerOf({{"BT /F 10 Tf 30 20 Td (ABC) Tj /C 10 Tf (000045) Tj /F 14 Tf (-X) Tj ET"}});
    ASSERT_TRUE(reader);
    EXPECT_EQ(strips(*reader, letter, 90)[0], u"ABC000045-X"_s);
}

TEST(PopplerReader, AWordOfPiecesIsPutTogether)
{
    const auto reader = readerOf({{"BT /F 10 Tf 30 20 Td [(AB) -20 (C00) 15 (0045)] TJ ET\n" +
                                   showText(300, 20, "AB") + showText(313.34, 20, "C7")}});
    ASSERT_TRUE(reader);
    EXPECT_EQ(strips(*reader, letter, 90)[0], u"ABC000045 ABC7"_s);
}

TEST(PopplerReader, AGlyphIsInAnAreaWhenTheMiddleOfItsBoxIs)
{
    // Digits of Courier at 10 points are 6 points wide: middles at 103, 109, 115, 121.
    const auto reader = readerOf({{"BT /C 10 Tf 100 400 Td (1234) Tj ET"}});
    ASSERT_TRUE(reader);
    const std::array areas{Rect{0, 380, 110, 420}, Rect{110, 380, 122, 420}, Rect{0, 420, 612, 440}};
    EXPECT_EQ(reader->textIn(0, areas), (std::vector{u"12"_s, u"34"_s, QString()}));
}

TEST(PopplerReader, ANumberAtTheVeryEdgeOfThePaperIsRead)
{
    const auto reader = readerOf({{showText(200, 0.5, "ABC000001") + showText(200, 784.5, "ABC000002")}});
    ASSERT_TRUE(reader);
    EXPECT_EQ(strips(*reader, letter, 90)[0], u"ABC000001"_s);
    EXPECT_EQ(strips(*reader, letter, 90)[1], u"ABC000002"_s);
}

TEST_P(TurnedPages, HaveTheirStripsInTheirOwnSpace)
{
    const SmallPage page{"BT /F 10 Tf " + GetParam().textMatrix + " Tm (DEF 1234567) Tj ET",
                         "-100 50 500 850",
                         "/CropBox [0 150 400 750] /Rotate " + std::to_string(GetParam().rotate)};
    const auto reader = readerOf({page});
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->cropBox(0), (Rect{0, 150, 400, 750}));
    EXPECT_EQ(reader->mediaSize(0), (Size{600, 800}));
    std::vector<QString> expected(4);
    expected[GetParam().strip] = u"DEF 1234567"_s;
    EXPECT_EQ(strips(*reader, {0, 150, 400, 750}, 90), expected);
}

INSTANTIATE_TEST_SUITE_P(
    PageReader, TurnedPages,
    testing::Values(TurnedPage{0, "1 0 0 1 170 160", 0}, TurnedPage{90, "0 1 -1 0 390 420", 3},
                    TurnedPage{180, "-1 0 0 -1 230 740", 1}, TurnedPage{270, "0 -1 1 0 10 480", 2},
                    TurnedPage{-90, "0 -1 1 0 10 480", 2}, TurnedPage{360, "1 0 0 1 170 160", 0},
                    TurnedPage{450, "0 1 -1 0 390 420", 3},
                    // Text that lies on its side when shown is read as well.
                    TurnedPage{0, "0 1 -1 0 390 420", 3}, TurnedPage{90, "1 0 0 1 170 160", 0},
                    TurnedPage{180, "1 0 0 1 170 160", 0}));

TEST(PopplerReader, TextOutsideTheCropBoxIsNotRead)
{
    const auto reader =
        readerOf({{showText(200, 20, "ABC000001"), "0 0 612 792", "/CropBox [0 100 612 792]"}});
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->textIn(0, std::array{Rect{0, 0, 612, 792}}), std::vector{QString()});
}

TEST(PopplerReader, ACropBoxIsCutToTheMediaBox)
{
    const auto reader = readerOf({{"", "0 0 612 792", "/CropBox [-50 -50 400 900]"}});
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->cropBox(0), (Rect{0, 0, 400, 792}));
}

TEST(PopplerReader, CharactersBeyondAsciiComeThroughWhole)
{
    const auto reader = readerOf({{showText(30, 20, "caf\\351 A\\2261")}});
    ASSERT_TRUE(reader);
    EXPECT_EQ(strips(*reader, letter, 90)[0], u"café A–1"_s);
}

TEST(PopplerReader, PagesThatDoNotExistGiveNothing)
{
    const auto reader = readerOf({{""}});
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->pageCount(), 1);
    for (const int index : {-1, 1, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(reader->cropBox(index));
        EXPECT_FALSE(reader->mediaSize(index));
        EXPECT_FALSE(reader->render(index, 10, 10, 1));
        EXPECT_FALSE(reader->textIn(index, std::array{letter, letter}));
        EXPECT_FALSE(reader->quickTextIn(index, letter));
    }
}

TEST(PopplerReader, WhatIsNoPdfIsNotOpened)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "empty.pdf", "");
    tests::writeFile(folder / "text.pdf", "Nothing of the kind, but long enough to be looked at twice.");
    EXPECT_FALSE(PageReader::open(folder / "empty.pdf"));
    EXPECT_FALSE(PageReader::open(folder / "text.pdf"));
    EXPECT_FALSE(PageReader::open(folder / "missing.pdf"));
    EXPECT_FALSE(PageReader::open(folder.path()));
    EXPECT_FALSE(PageReader::open(std::vector<char>{}));
}

TEST(PopplerReader, AFileThatNeedsAPasswordIsNotOpenedButOneThatNeedsNoneIs)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "plain.pdf", smallPdf({{showText(30, 20, "ABC000001")}}));
    tests::encrypt(folder / "plain.pdf", folder / "locked.pdf", "secret owner 256");
    tests::encrypt(folder / "plain.pdf", folder / "restricted.pdf", "'' owner 256 --modify=none");
    EXPECT_FALSE(PageReader::open(folder / "locked.pdf"));
    const auto restricted = PageReader::open(folder / "restricted.pdf");
    ASSERT_TRUE(restricted);
    EXPECT_EQ(strips(*restricted, letter, 90)[0], u"ABC000001"_s);
}

TEST(PopplerReader, AFileNameIsBytes)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "\xFF\xFE caf\xE9.pdf", smallPdf({{showText(30, 20, "ABC000001")}}));
    const auto reader = PageReader::open(folder / "\xFF\xFE caf\xE9.pdf");
    ASSERT_TRUE(reader);
    EXPECT_EQ(strips(*reader, letter, 90)[0], u"ABC000001"_s);
}

TEST(PopplerReader, ADamagedFileIsRepairedInSilence)
{
    std::string bytes = smallPdf({{showText(30, 20, "ABC000001") + "Q Q Q garbage ] >>"}});
    bytes.replace(bytes.find("xref"), 4, "gone");
    testing::internal::CaptureStderr();
    const auto reader = PageReader::open(std::vector<char>(bytes.begin(), bytes.end()));
    ASSERT_TRUE(reader);
    EXPECT_EQ(strips(*reader, letter, 90)[0], u"ABC000001"_s);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(PopplerReader, RendersUprightAndCroppedOnWhite)
{
    // A red square in the corner of the crop box that is shown at the top left.
    const auto reader =
        readerOf({{"1 0 0 rg 50 60 20 20 re f", "0 0 300 400", "/CropBox [50 60 150 260] /Rotate 90"}});
    ASSERT_TRUE(reader);
    const auto bitmap = reader->render(0, 200, 100, 1);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 200);
    EXPECT_EQ(bitmap->height, 100);
    ASSERT_EQ(bitmap->pixels.size(), 200U * 100 * 4);
    EXPECT_EQ(pixelAt(*bitmap, 10, 10), red);
    EXPECT_EQ(pixelAt(*bitmap, 30, 10), white);
    EXPECT_EQ(pixelAt(*bitmap, 10, 30), white);
    EXPECT_EQ(pixelAt(*bitmap, 199, 99), white);
}

TEST(PopplerReader, RenderingScalesInPixelsAPoint)
{
    const auto reader = readerOf({{"1 0 0 rg 0 0 10 10 re f", "0 0 100 100"}});
    ASSERT_TRUE(reader);
    const auto bitmap = reader->render(0, 250, 250, 2.5);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(pixelAt(*bitmap, 22, 228), red);
    EXPECT_EQ(pixelAt(*bitmap, 28, 228), white);
    EXPECT_EQ(pixelAt(*bitmap, 22, 222), white);
}

TEST(PopplerReader, SlantedEdgesAreSmoothed)
{
    const auto reader = readerOf({{"0 g 0 0 m 100 100 l 100 0 l f", "0 0 100 100"}});
    ASSERT_TRUE(reader);
    const auto bitmap = reader->render(0, 50, 50, 0.5);
    ASSERT_TRUE(bitmap);
    const int shade = pixelAt(*bitmap, 20, 29)[0];
    EXPECT_GT(shade, 20);
    EXPECT_LT(shade, 235);
}

TEST(PopplerReader, SizesThatGiveNoBitmapAreRefused)
{
    const auto reader = readerOf({{""}});
    ASSERT_TRUE(reader);
    EXPECT_FALSE(reader->render(0, 0, 10, 1));
    EXPECT_FALSE(reader->render(0, 10, -1, 1));
    EXPECT_FALSE(reader->render(0, 10, 10, 0));
    EXPECT_FALSE(reader->render(0, 10, 10, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(reader->render(0, 1'000'000, 1'000'000, 1));
}

} // namespace tallyfold::pdf
