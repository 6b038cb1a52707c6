#include "tests/support/AnnotatedPage.h"
#include "tests/support/Colors.h"
#include "tests/support/FlatCopy.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Picture.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::AnnotatedPage;
using tests::blue;
using tests::DrawnCopy;
using tests::flatCopy;
using tests::green;
using tests::PdfBuilder;
using tests::Picture;
using tests::red;
using tests::reference;
using tests::soundPages;
using tests::TemporaryFolder;

TEST(Annotations, AnAppearanceFillsItsRectangle)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Stamp/Rect[100 40 140 80]/AP<</N " + reference(page.form("1 0 0")) + ">>");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 102, 42));
    EXPECT_TRUE(drawn.is(red, 138, 78));
    EXPECT_TRUE(drawn.isPaper(98, 60));
    EXPECT_TRUE(drawn.isPaper(142, 60));
}

TEST(Annotations, TheMatrixOfAnAppearanceTurnsItInItsRectangle)
{
    AnnotatedPage page;
    const int form =
        page.builder().addStream("/Type/XObject/Subtype/Form/BBox[0 0 20 10]/Matrix[0 1 -1 0 0 0]",
                                 "1 0 0 rg 0 0 10 10 re f 0 0 1 rg 10 0 10 10 re f");
    page.annotate("/Subtype/Stamp/Rect[100 40 110 60]/AP<</N " + reference(form) + ">>");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 105, 45));
    EXPECT_TRUE(drawn.is(blue, 105, 55));
}

TEST(Annotations, AnAppearanceThatDoesNotSayItIsAFormIsDrawn)
{
    AnnotatedPage page;
    const int form = page.builder().addStream("/BBox[0 0 20 10]", "1 0 0 rg 0 0 20 10 re f");
    page.annotate("/Subtype/Stamp/Rect[100 40 140 80]/AP<</N " + reference(form) + ">>");
    EXPECT_TRUE(DrawnCopy(page.file()).is(red, 120, 60));
}

TEST(Annotations, WhatIsHiddenOrOnlyForPrintIsNotDrawn)
{
    for (const char *flags : {"/F 2", "/F 32", "/F 34"}) {
        AnnotatedPage page;
        page.annotate(std::string("/Subtype/Stamp/Rect[100 40 140 80]") + flags + "/AP<</N " +
                      reference(page.form("1 0 0")) + ">>");
        EXPECT_TRUE(DrawnCopy(page.file()).isEmpty()) << flags;
    }
}

TEST(Annotations, PopUpsAreNotDrawn)
{
    AnnotatedPage page;
    page.annotate("/Rect[100 40 140 80]/Subtype/Popup/Open true/AP<</N " + reference(page.form("1 0 0")) +
                  ">>");
    EXPECT_TRUE(DrawnCopy(page.file()).isEmpty());
}

TEST(Annotations, ALinkIsDrawnOnlyWhereItHasAPictureOfItsOwn)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Link/Rect[10 40 50 80]/Border[0 0 2]/C[0 0 1]/AP<</N " +
                  reference(page.form("1 0 0")) + ">>");
    page.annotate("/Subtype/Link/Rect[70 40 110 80]/Border[0 0 2]/C[0 0 1]");
    page.annotate("/Subtype/Link/Rect[130 40 170 80]/Border[0 0 2]/C[0 0 1]/AP<<>>");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 12, 42));
    EXPECT_TRUE(drawn.is(red, 30, 60));
    for (const double left : {60, 120}) {
        EXPECT_TRUE(drawn.isPaper(left + 11, 60)) << left;
        EXPECT_TRUE(drawn.isPaper(left + 30, 60)) << left;
    }
}

TEST(Annotations, OneThatIsListedTwiceIsDrawnTwice)
{
    AnnotatedPage page;
    const int form = page.builder().addStream(
        "/Type/XObject/Subtype/Form/BBox[0 0 20 10]/Resources<</ExtGState<</H<</ca .5>>>>>>",
        "/H gs 1 0 0 rg 0 0 20 10 re f");
    page.list(page.annotate("/Subtype/Stamp/Rect[10 10 30 20]/AP<</N " + reference(form) + ">>"));
    EXPECT_TRUE(DrawnCopy(page.file()).is({255, 64, 64}, 15, 15)); // Half as pale as drawn once.
}

TEST(Annotations, AFieldThatIsReachedInSeveralWaysIsDrawnOnce)
{
    PdfBuilder builder;
    const std::string form = reference(builder.addStream(
        "/Type/XObject/Subtype/Form/BBox[0 0 20 10]/Resources<</ExtGState<</H<</ca .5>>>>>>",
        "/H gs 1 0 0 rg 0 0 20 10 re f"));
    const std::string field = reference(builder.reserve());
    const std::string widget =
        reference(builder.add("<</Type/Annot/Subtype/Widget/FT/Tx/T(b)/V(v)/Rect[10 10 30 20]/Parent " +
                              field + "/AP<</N " + form + ">>>>"));
    builder.set(std::stoi(field), "<</T(a)/Kids[" + widget + ' ' + widget + "]>>");
    builder.addToCatalog("/AcroForm<</Fields[" + field + ' ' + widget + ' ' + field + "]>>");
    builder.addPage("/MediaBox[0 0 200 100]/Annots[" + widget + "]");
    // Twice it would be as red again.
    EXPECT_TRUE(DrawnCopy(builder.file()).is({255, 128, 128}, 15, 15));
}

TEST(Annotations, AFieldOfNoFormIsDrawn)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Widget/FT/Tx/T(a)/V(v)/Rect[100 40 140 80]/AP<</N " +
                  reference(page.form("1 0 0")) + ">>");
    EXPECT_TRUE(DrawnCopy(page.file()).is(red, 120, 60));
}

TEST(Annotations, OnATurnedPageTheyTurnWithIt)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Stamp/Rect[100 40 140 80]/AP<</N " + reference(page.form("1 0 0")) + ">>");
    const DrawnCopy drawn(page.file("/Rotate 90"));
    // Turned clockwise, (x, y) is shown at (y, 200 - x) of a page of 100 by 200.
    EXPECT_TRUE(drawn.is(red, 60, 80));
    EXPECT_TRUE(drawn.isPaper(60, 120));
}

TEST(Annotations, OneThatDoesNotTurnHangsFromItsUpperLeftCorner)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Stamp/F 16/Rect[100 40 140 60]/AP<</N " + reference(page.form("1 0 0")) + ">>");
    const DrawnCopy drawn(page.file("/Rotate 90"));
    // Its corner (100, 60) is shown at (60, 100), and it goes 40 to the right and 20 down from there.
    EXPECT_TRUE(drawn.is(red, 62, 98));
    EXPECT_TRUE(drawn.is(red, 98, 82));
    EXPECT_TRUE(drawn.isPaper(58, 98));
    EXPECT_TRUE(drawn.isPaper(62, 102));
}

TEST(Annotations, AStateIsChosenByName)
{
    AnnotatedPage page;
    const std::string states =
        "/AP<</N<</Yes " + reference(page.form("1 0 0")) + "/Off " + reference(page.form("0 0 1")) + ">>>>";
    page.annotate("/Subtype/Widget/FT/Btn/Rect[0 0 40 40]/AS/Yes" + states);
    page.annotate("/Subtype/Widget/FT/Btn/Rect[50 0 90 40]/AS/Off" + states);
    page.annotate("/Subtype/Widget/FT/Btn/Rect[100 0 140 40]/V/Yes" + states); // Without a state of its own.
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 20, 20));
    EXPECT_TRUE(drawn.is(blue, 70, 20));
    EXPECT_TRUE(drawn.is(red, 120, 20));
}

TEST(Annotations, OneOfALayerThatIsOffIsNotSeen)
{
    AnnotatedPage page;
    const int layer = page.builder().add("<</Type/OCG/Name(Draft)>>");
    page.builder().addToCatalog("/OCProperties<</OCGs[" + reference(layer) + "]/D<</OFF[" + reference(layer) +
                                "]>>>>");
    page.annotate("/Subtype/Stamp/Rect[100 40 140 80]/OC " + reference(layer) + "/AP<</N " +
                  reference(page.form("1 0 0")) + ">>");
    EXPECT_TRUE(DrawnCopy(page.file()).isEmpty());
}

TEST(Annotations, MalformedOnesTakeNoOtherWithThem)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Stamp/Rect[1 2 3]/AP<</N " + reference(page.form("0 0 1")) + ">>");
    page.annotate("/Subtype/Stamp/Rect[1e999 0 5 (x)]/AP 7");
    page.annotate("/Subtype/Highlight/Rect[0 0 10 10]/QuadPoints[1 2 3]");
    page.annotate("/Subtype/Widget/FT/Tx/Rect[0 0 10 10]/V 5/DA 7");
    page.annotate("/Subtype/Ink/Rect[0 0 10 10]/InkList 9");
    page.annotate("/Subtype 3/Rect[0 0 10 10]");
    page.annotate("/Subtype/Stamp/Rect[100 40 140 80]/AP<</N " + reference(page.form("1 0 0")) + ">>");
    EXPECT_TRUE(DrawnCopy(page.file()).is(red, 120, 60));
}

TEST(Annotations, AListThatIsNoneShowsNothing)
{
    PdfBuilder builder;
    builder.addPage("/MediaBox[0 0 200 100]/Annots 7");
    EXPECT_TRUE(DrawnCopy(builder.file()).isEmpty());
}

TEST(Annotations, AHighlightWithoutAppearanceLetsTheTextShowThrough)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Highlight/C[1 1 0]/Rect[20 20 120 40]/QuadPoints[20 40 120 40 20 20 120 20]");
    const int content = page.builder().addStream("", "0 0 1 rg 60 0 20 100 re f");
    const DrawnCopy drawn(page.file("/Contents " + reference(content)));
    EXPECT_TRUE(drawn.is({255, 255, 0}, 40, 30));
    EXPECT_TRUE(drawn.is({0, 0, 0}, 70, 30)); // Yellow over blue, multiplied.
    EXPECT_TRUE(drawn.is(blue, 70, 60));
}

TEST(Annotations, LinesUnderAndThroughTextAreDrawnWhereTheyBelong)
{
    AnnotatedPage page;
    page.annotate(
        "/Subtype/Underline/C[1 0 0]/Border[0 0 2]/Rect[20 60 80 80]/QuadPoints[20 80 80 80 20 60 80 60]");
    page.annotate("/Subtype/StrikeOut/C[0 0 1]/Rect[20 20 80 40]/QuadPoints[20 40 80 40 20 20 80 20]");
    page.annotate("/Subtype/Squiggly/C[0 1 0]/Rect[120 20 180 40]/QuadPoints[120 40 180 40 120 20 180 20]");
    const DrawnCopy drawn(page.file());
    EXPECT_FALSE(drawn.isPaper(50, 60));
    EXPECT_TRUE(drawn.isPaper(50, 70));
    EXPECT_FALSE(drawn.isPaper(50, 30));
    EXPECT_TRUE(drawn.isPaper(50, 22));
    EXPECT_FALSE(drawn.isPaper(150, 20.5));
    EXPECT_TRUE(drawn.isPaper(150, 30));
}

TEST(Annotations, SquaresAndCirclesAreFilledAndOutlined)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Square/C[1 0 0]/IC[0 0 1]/BS<</W 4>>/Rect[10 10 60 60]");
    page.annotate("/Subtype/Circle/C[1 0 0]/IC[0 1 0]/BS<</W 4>>/Rect[100 10 150 60]");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 12, 35));
    EXPECT_TRUE(drawn.is(blue, 35, 35));
    EXPECT_TRUE(drawn.is(red, 12, 12));
    EXPECT_TRUE(drawn.is(red, 102, 35));
    EXPECT_TRUE(drawn.is(green, 125, 35));
    EXPECT_TRUE(drawn.isPaper(103, 13));
}

TEST(Annotations, LinesPolygonsAndInkAreDrawn)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Line/C[1 0 0]/BS<</W 4>>/L[10 20 60 20]/Rect[10 15 60 25]");
    page.annotate(
        "/Subtype/Polygon/C[1 0 0]/IC[0 0 1]/BS<</W 2>>/Vertices[80 10 120 10 100 50]/Rect[80 10 120 50]");
    page.annotate("/Subtype/PolyLine/C[0 0 1]/BS<</W 4>>/Vertices[140 10 180 10 180 50]/Rect[140 10 180 50]");
    page.annotate("/Subtype/Ink/C[0 1 0]/BS<</W 4>>/InkList[[10 80 60 80][80 80 100 80]]/Rect[10 75 100 85]");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 35, 20));
    EXPECT_TRUE(drawn.is(blue, 100, 25));
    EXPECT_TRUE(drawn.is(blue, 180, 30));
    EXPECT_TRUE(drawn.isPaper(160, 30)); // Not closed.
    EXPECT_TRUE(drawn.is(green, 35, 80));
    EXPECT_TRUE(drawn.isPaper(70, 80));
}

TEST(Annotations, ALineHasTheEndingsItAsksFor)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Line/C[1 0 0]/IC[0 0 1]/BS<</W 2>>/LE[/None/ClosedArrow]/L[10 50 100 50]/Rect[10 "
                  "40 100 60]");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(blue, 90, 52));
    EXPECT_TRUE(drawn.isPaper(14, 53));
}

TEST(Annotations, OpacityIsKept)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Square/CA 0.5/C[1 0 0]/IC[1 0 0]/Rect[10 10 60 60]");
    EXPECT_TRUE(DrawnCopy(page.file()).is({255, 128, 128}, 35, 35));
}

TEST(Annotations, FreeTextIsText)
{
    const TemporaryFolder folder;
    AnnotatedPage page;
    page.annotate(
        "/Subtype/FreeText/DA(/Helv 10 Tf 0 0 1 rg)/Contents(Ask counsel first)/Rect[10 10 190 60]");
    const std::filesystem::path copy = flatCopy(folder.path(), page.file());
    EXPECT_EQ(soundPages(copy), 1);
    EXPECT_NE(tests::textOfPage(copy, 1).find("Ask counsel first"), std::string::npos);
}

TEST(Annotations, WhatANoteSaysIsNotOnThePage)
{
    const TemporaryFolder folder;
    AnnotatedPage page;
    page.annotate("/Subtype/Text/Contents(privileged thought)/Rect[10 10 30 30]");
    const std::filesystem::path copy = flatCopy(folder.path(), page.file());
    EXPECT_EQ(tests::textOfPage(copy, 1).find("privileged"), std::string::npos);
    EXPECT_TRUE(Picture::of(copy, Picture::Tool::poppler).hasInk(10, 10, 30, 30));
}

} // namespace tallyfold
