#include "tests/support/AnnotatedPage.h"
#include "tests/support/Colors.h"
#include "tests/support/FlatCopy.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

namespace tallyfold {

using tests::AnnotatedPage;
using tests::blue;
using tests::DrawnCopy;
using tests::PdfBuilder;
using tests::red;
using tests::reference;

namespace {

/// Content that fills 40 by 40 points from the origin.
constexpr const char *square = "1 0 0 rg 0 0 40 40 re f";

/// An appearance with the given entries besides its type.
std::string appearance(AnnotatedPage &page, const std::string &entries, const std::string &content = square)
{
    return "/AP<</N " + reference(page.builder().addStream("/Type/XObject/Subtype/Form" + entries, content)) +
           ">>";
}

/// A stamp of 40 by 40 points from (100, 40) with such an appearance.
void addStamp(AnnotatedPage &page, const std::string &entries, const std::string &content = square)
{
    page.annotate("/Subtype/Stamp/Rect[100 40 140 80]" + appearance(page, entries, content));
}

/// A layer that the file hides.
std::string hiddenLayer(AnnotatedPage &page)
{
    const std::string layer = reference(page.builder().add("<</Type/OCG/Name(Draft)>>"));
    page.builder().addToCatalog("/OCProperties<</OCGs[" + layer + "]/D<</OFF[" + layer + "]>>>>");
    return layer;
}

/// How many transparency groups the copy of `source` has.
int groupsInCopy(const std::string &source)
{
    const tests::TemporaryFolder folder;
    const std::string copy = tests::flatCopy(folder.path(), source);
    const std::string shown = tests::runTool({"qpdf", "--qdf", "--object-streams=disable", copy, "-"}).output;
    int count = 0;
    for (auto at = shown.find("/Group "); at != std::string::npos; at = shown.find("/Group ", at + 1)) {
        ++count;
    }
    return count;
}

} // namespace

TEST(AnnotationAppearance, WithoutABoxItLiesAtTheCornerInItsOwnSize)
{
    for (const char *box : {"", "/BBox null"}) {
        AnnotatedPage page;
        addStamp(page, box, "1 0 0 rg 0 0 30 20 re f");
        const DrawnCopy drawn(page.file());
        EXPECT_TRUE(drawn.is(red, 101, 41)) << box;
        EXPECT_TRUE(drawn.is(red, 129, 59)) << box;
        EXPECT_TRUE(drawn.isPaper(131, 50)) << box;
        EXPECT_TRUE(drawn.isPaper(110, 61)) << box;
    }
}

TEST(AnnotationAppearance, WithoutABoxItsMatrixTurnsAndScalesButDoesNotMoveIt)
{
    AnnotatedPage page;
    addStamp(page, "/Matrix[.5 0 0 .5 30 30]");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 101, 41));
    EXPECT_TRUE(drawn.is(red, 119, 59));
    EXPECT_TRUE(drawn.isPaper(121, 50));
}

TEST(AnnotationAppearance, WithoutABoxOneStreamServesAnnotationsOfAnySize)
{
    AnnotatedPage page;
    const std::string mark = appearance(page, "");
    page.annotate("/Subtype/Stamp/Rect[10 10 20 20]" + mark);
    page.annotate("/Subtype/Stamp/Rect[100 40 160 100]" + mark);
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 12, 12));
    EXPECT_TRUE(drawn.is(red, 138, 78));
    EXPECT_TRUE(drawn.isPaper(142, 78));
}

TEST(AnnotationAppearance, ABoxOfNoAreaOrOfNoNumbersShowsNothing)
{
    for (const char *box : {"[0 0 0 0]", "[0 0 0 40]", "[0 0 40]", "[]", "[/a/b/c/d]"}) {
        AnnotatedPage page;
        addStamp(page, std::string("/BBox") + box);
        EXPECT_TRUE(DrawnCopy(page.file()).isEmpty()) << box;
    }
}

TEST(AnnotationAppearance, CornersComeInAnyOrder)
{
    for (const char *rect : {"[10 40 50 80]", "[50 80 10 40]", "[50 40 10 80]"}) {
        for (const char *box : {"/BBox[0 0 40 40]", "/BBox[40 40 0 0]", "/BBox[0 40 40 0]"}) {
            AnnotatedPage page;
            page.annotate("/Subtype/Stamp/Rect" +
                          (rect + appearance(page, box, "1 0 0 rg 0 0 20 40 re f 0 0 1 rg 20 0 20 40 re f")));
            const DrawnCopy drawn(page.file());
            EXPECT_TRUE(drawn.is(red, 12, 42)) << rect << box;
            EXPECT_TRUE(drawn.is(blue, 48, 78)) << rect << box;
        }
    }
}

TEST(AnnotationAppearance, ARectangleOfNoAreaShowsNothing)
{
    for (const char *rect : {"[10 10 10 50]", "[10 10 50 10]", "[0 0 0 0]", "[10 10 50]", "null"}) {
        AnnotatedPage page;
        page.annotate("/Subtype/Stamp/Rect " + (rect + appearance(page, "/BBox[0 0 40 40]")));
        EXPECT_TRUE(DrawnCopy(page.file()).isEmpty()) << rect;
    }
}

TEST(AnnotationAppearance, AMatrixThatIsNoneIsLeftOut)
{
    for (const char *matrix : {"[1 0 0]", "null", "7", "[/a 0 0 1 0 0]"}) {
        AnnotatedPage page;
        addStamp(page, std::string("/BBox[0 0 40 40]/Matrix ") + matrix);
        const DrawnCopy drawn(page.file());
        EXPECT_TRUE(drawn.is(red, 102, 42)) << matrix;
        EXPECT_TRUE(drawn.is(red, 138, 78)) << matrix;
    }
}

TEST(AnnotationAppearance, AMatrixThatFlattensShowsNothing)
{
    for (const char *matrix : {"[0 0 0 0 0 0]", "[0 0 0 1 0 0]", "[1 0 0 0 0 0]", "[1 1 1 1 0 0]"}) {
        AnnotatedPage page;
        addStamp(page, std::string("/BBox[0 0 40 40]/Matrix") + matrix);
        EXPECT_TRUE(DrawnCopy(page.file()).isEmpty()) << matrix;
    }
}

TEST(AnnotationAppearance, ALayerOfTheStreamItselfDoesNotHideIt)
{
    AnnotatedPage page;
    const std::string layer = hiddenLayer(page);
    addStamp(page, "/BBox[0 0 40 40]/OC " + layer);
    EXPECT_TRUE(DrawnCopy(page.file()).is(red, 120, 60));
}

TEST(AnnotationAppearance, AStreamThatThePageDrawsAsWellKeepsItsLayerThere)
{
    AnnotatedPage page;
    const std::string layer = hiddenLayer(page);
    const std::string stream =
        reference(page.builder().addStream("/Type/XObject/Subtype/Form/BBox[0 0 40 40]/OC " + layer, square));
    page.annotate("/Subtype/Stamp/Rect[100 40 140 80]/AP<</N " + stream + ">>");
    const std::string content = reference(page.builder().addStream("", "/F Do"));
    const DrawnCopy drawn(page.file("/Contents " + content + "/Resources<</XObject<</F " + stream + ">>>>"));
    EXPECT_TRUE(drawn.is(red, 120, 60));
    EXPECT_TRUE(drawn.isPaper(20, 20));
}

TEST(AnnotationAppearance, AHighlightMultipliesWithThePageWhateverGroupItIs)
{
    for (const char *group : {"", "/Group<</S/Transparency>>", "/Group<</S/Transparency/I false/K false>>",
                              "/Group<</S/Transparency/I true/CS/DeviceRGB>>"}) {
        AnnotatedPage page;
        addStamp(page, std::string("/BBox[0 0 40 40]/Resources<</ExtGState<</M<</BM/Multiply>>>>>>") + group,
                 "/M gs 1 0 1 rg 0 0 40 40 re f");
        const std::string content = reference(page.builder().addStream("", "1 1 0 rg 0 0 200 100 re f"));
        EXPECT_TRUE(DrawnCopy(page.file("/Contents " + content)).is(red, 120, 60)) << group;
    }
}

// pdf.js paints every group by itself, and a blend mode in it without what is below.
TEST(AnnotationAppearance, ItIsAGroupOnlyToKeepItsPartsFromShowingThroughEachOther)
{
    const auto isGroup = [](const std::string &group) {
        AnnotatedPage page;
        addStamp(page, "/BBox[0 0 40 40]" + group);
        return groupsInCopy(page.file()) == 1;
    };
    EXPECT_FALSE(isGroup("/Group<</S/Transparency>>"));
    EXPECT_FALSE(isGroup("/Group<</S/Transparency/I false/K false>>"));
    EXPECT_FALSE(isGroup("/Group<</S/Transparency/I true>>"));
    EXPECT_TRUE(isGroup("/Group<</S/Transparency/K true>>"));
}

TEST(AnnotationAppearance, WhatItPaintsPlainlyIsAGroupOnlyWhereThatIsSeen)
{
    const auto groups = [](const std::string &resources, const std::string &group, bool isShared = false) {
        AnnotatedPage page;
        PdfBuilder &builder = page.builder();
        const std::string entries = "/Type/XObject/Subtype/Form/BBox[0 0 40 40]";
        const std::string lowest = reference(builder.addStream(entries + "/Resources<<>>" + group, square));
        const std::string middle = reference(
            builder.addStream(entries + "/Resources<</XObject<</F " + lowest + ">>>>" + group, "/F Do"));
        const std::string own = reference(builder.add("<<" + resources + "/XObject<</F " + middle + ">>>>"));
        addStamp(page, "/BBox[0 0 40 40]/Resources " + own, "/F Do");
        return groupsInCopy(page.file(isShared ? "/Resources " + own : ""));
    };
    EXPECT_EQ(groups("", "/Group<</S/Transparency>>"), 0);
    EXPECT_EQ(groups("", "/Group<</S/Transparency/I true>>"), 2);
    EXPECT_EQ(groups("", "/Group<</S/Transparency/K true>>"), 2);
    EXPECT_EQ(groups("/ExtGState<</G<</ca .5>>>>", "/Group<</S/Transparency>>"), 2)
        << "two that overlap are as opaque as one";
    EXPECT_EQ(groups("", "/Group<</S/Transparency>>", true), 2) << "the page may paint it in any way";
}

TEST(AnnotationAppearance, AStreamThatThePageDrawsAsWellKeepsItsGroupThere)
{
    AnnotatedPage page;
    const std::string stream = reference(
        page.builder().addStream("/Type/XObject/Subtype/Form/BBox[0 0 40 40]/Group<</S/Transparency/I true>>"
                                 "/Resources<</ExtGState<</M<</BM/Multiply>>>>>>",
                                 "/M gs 1 0 1 rg 0 0 40 40 re f"));
    page.annotate("/Subtype/Stamp/Rect[100 40 140 80]/AP<</N " + stream + ">>");
    const std::string content = reference(page.builder().addStream("", "1 1 0 rg 0 0 200 100 re f /F Do"));
    const DrawnCopy drawn(page.file("/Contents " + content + "/Resources<</XObject<</F " + stream + ">>>>"));
    EXPECT_TRUE(drawn.is(red, 120, 60));
    EXPECT_TRUE(drawn.is({255, 0, 255}, 20, 20));
}

TEST(AnnotationAppearance, ALayerOfTheAnnotationHidesItHoweverItIsNamed)
{
    for (const bool isMembership : {false, true}) {
        AnnotatedPage page;
        const std::string layer = hiddenLayer(page);
        const std::string membership = reference(page.builder().add("<</Type/OCMD/OCGs " + layer + ">>"));
        page.annotate("/Subtype/Stamp/Rect[100 40 140 80]/OC " + (isMembership ? membership : layer) +
                      appearance(page, "/BBox[0 0 40 40]"));
        EXPECT_TRUE(DrawnCopy(page.file()).isEmpty()) << isMembership;
    }
}

TEST(AnnotationAppearance, AnyValueMayBeAnObjectOfItsOwn)
{
    AnnotatedPage page;
    const auto indirect = [&page](const std::string &value) { return reference(page.builder().add(value)); };
    const auto numbers = [&indirect](std::initializer_list<const char *> values) {
        std::string array = "[";
        for (const char *value : values) {
            array += indirect(value) + ' ';
        }
        return indirect(array + "]");
    };
    const std::string form = reference(page.builder().addStream(
        "/Type " + indirect("/XObject") + "/Subtype " + indirect("/Form") + "/BBox " +
            numbers({"0", "0", "40", "40"}) + "/Matrix " + numbers({"1", "0", "0", "1", "0", "0"}),
        square));
    const std::string states = indirect("<</Yes " + form + ">>");
    page.annotate("/Subtype " + indirect("/Widget") + "/FT " + indirect("/Btn") + "/F " + indirect("4") +
                  "/Rect " + numbers({"100", "40", "140", "80"}) + "/AS " + indirect("/Yes") + "/AP " +
                  indirect("<</N " + states + ">>"));
    page.annotate("/Subtype " + indirect("/Stamp") + "/F " + indirect("2") + "/Rect " +
                  numbers({"10", "40", "50", "80"}) + "/AP<</N " + form + ">>");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 102, 42));
    EXPECT_TRUE(drawn.is(red, 138, 78));
    EXPECT_TRUE(drawn.isPaper(30, 60)); // Hidden.
}

TEST(AnnotationAppearance, FlagsWrittenAsFractionsCount)
{
    for (const char *flags : {"2.0", "32."}) {
        AnnotatedPage page;
        page.annotate(std::string("/Subtype/Stamp/Rect[100 40 140 80]/F ") + flags +
                      appearance(page, "/BBox[0 0 40 40]"));
        EXPECT_TRUE(DrawnCopy(page.file()).isEmpty()) << flags;
    }
}

TEST(AnnotationAppearance, WhatIsNotForPrintOrOfAnUnknownKindIsSeenOnAScreen)
{
    for (const char *entries : {"/Subtype/Stamp/F 0", "/Subtype/Stamp/F 1", "/Subtype/Unheard",
                                "/Subtype/Unheard/F 1", "", "/Subtype/Stamp/F(2)"}) {
        AnnotatedPage page;
        page.annotate(std::string("/Rect[100 40 140 80]") + entries + appearance(page, "/BBox[0 0 40 40]"));
        EXPECT_TRUE(DrawnCopy(page.file()).is(red, 120, 60)) << entries;
    }
}

TEST(AnnotationAppearance, StatesServeOthersThanButtonsAsWell)
{
    AnnotatedPage page;
    const std::string states =
        "/AP<</N<</Yes " + reference(page.form("1 0 0")) + "/Off " + reference(page.form("0 0 1")) + ">>>>";
    page.annotate("/Subtype/Stamp/Rect[0 0 40 40]/AS/Yes" + states);
    page.annotate("/Subtype/Stamp/Rect[50 0 90 40]" + states);
    page.annotate("/Subtype/Stamp/Rect[100 0 140 40]/AS/Maybe" + states);
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 20, 20));
    EXPECT_TRUE(drawn.is(blue, 70, 20));
    EXPECT_TRUE(drawn.isPaper(120, 20));
}

TEST(AnnotationAppearance, MarkupWithoutOneForItsStateIsDrawnAsIfItHadNone)
{
    const std::initializer_list<std::pair<const char *, const char *>> others{
        {"/AS/Maybe/AP<</N<</Yes ", ">>>>"}, {"/AP<</N<</Yes ", ">>>>"}, {"/AP<</D ", ">>"}, {"/AP ", ""}};
    for (const auto &[before, after] : others) {
        AnnotatedPage page;
        page.annotate("/Subtype/Square/C[0 0 1]/IC[0 0 1]/Rect[100 40 140 80]" +
                      (before + reference(page.form("1 0 0"))) + after);
        EXPECT_TRUE(DrawnCopy(page.file()).is(blue, 120, 60)) << before;
    }
}

} // namespace tallyfold
