#include "pdf/annotations/FieldBox.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

namespace {

FieldBox boxOf(const std::string &entries, FieldOutline outline = FieldOutline::rectangle)
{
    return fieldBoxOf(QPDFObjectHandle::parse("<<" + entries + ">>"), {10, 20, 110, 60}, outline);
}

} // namespace

TEST(FieldBox, WithoutCharacteristicsThereIsNeitherBorderNorBackground)
{
    const FieldBox box = boxOf("");
    EXPECT_EQ(box.size, (Size{100, 40}));
    EXPECT_EQ(box.matrix, Matrix());
    EXPECT_EQ(box.border.width, 0);
    EXPECT_EQ(box.inside(), (Rect{0, 0, 100, 40}));
    EXPECT_EQ(box.decoration, "q Q\n");
}

TEST(FieldBox, TheBackgroundFillsTheOutline)
{
    EXPECT_EQ(boxOf("/MK<</BG[0.5]>>").decoration, "q 0.5 g 0 0 100 40 re f Q\n");
    const std::string round = boxOf("/MK<</BG[0.5]>>", FieldOutline::circle).decoration;
    EXPECT_TRUE(round.starts_with("q 0.5 g 30 20 m ")) << round;
    EXPECT_TRUE(round.ends_with("30 20 c h f Q\n")) << round;
}

TEST(FieldBox, TheBorderLiesInsideTheBox)
{
    const FieldBox box = boxOf("/MK<</BC[1 0 0]>>/BS<</W 4>>");
    EXPECT_EQ(box.decoration, "q 1 0 0 RG 4 w 2 2 96 36 re S Q\n");
    EXPECT_EQ(box.inside(), (Rect{4, 4, 96, 36}));
    const std::string round = boxOf("/MK<</BC[1 0 0]>>/BS<</W 4>>", FieldOutline::circle).decoration;
    EXPECT_TRUE(round.starts_with("q 1 0 0 RG 4 w 32 20 m ")) << round;
    EXPECT_TRUE(round.ends_with("32 20 c h S Q\n")) << round;
}

TEST(FieldBox, ABorderOfNoWidthIsNotDrawn)
{
    const FieldBox box = boxOf("/MK<</BC[1 0 0]>>/BS<</W 0>>");
    EXPECT_EQ(box.decoration, "q Q\n");
    EXPECT_EQ(box.inside(), (Rect{0, 0, 100, 40}));
}

TEST(FieldBox, AnUnderlineRunsAlongTheLowerEdge)
{
    EXPECT_EQ(boxOf("/MK<</BC[0]>>/BS<</W 4/S/U>>").decoration, "q 0 G 4 w 0 2 m 100 2 l S Q\n");
}

TEST(FieldBox, ThickBordersHaveALitAndAShadedEdge)
{
    const std::string upper = "2 2 m 2 38 l 98 38 l 96 36 l 4 36 l 4 4 l h ";
    const std::string lower = "98 38 m 98 2 l 2 2 l 4 4 l 96 4 l 96 36 l h ";
    const std::string border = "0 G 2 w 1 1 98 38 re S Q\n";
    const FieldBox beveled = boxOf("/MK<</BC[0]>>/BS<</W 2/S/B>>");
    EXPECT_EQ(beveled.decoration, "q 1 g " + upper + "f 0.5 g " + lower + "f " + border);
    EXPECT_EQ(beveled.inside(), (Rect{4, 4, 96, 36}));
    const FieldBox inset = boxOf("/MK<</BC[0]>>/BS<</W 2/S/I>>");
    EXPECT_EQ(inset.decoration, "q 0.5 g " + upper + "f 0.75 g " + lower + "f " + border);
    EXPECT_EQ(inset.inside(), (Rect{4, 4, 96, 36}));
}

TEST(FieldBox, ThickEdgesNeedNoColourAndGoWithNoCircle)
{
    const FieldBox colourless = boxOf("/BS<</W 2/S/B>>");
    EXPECT_TRUE(colourless.decoration.starts_with("q 1 g 2 2 m ")) << colourless.decoration;
    EXPECT_TRUE(colourless.decoration.ends_with("f Q\n")) << colourless.decoration;
    EXPECT_EQ(colourless.inside(), (Rect{4, 4, 96, 36}));
    EXPECT_EQ(boxOf("/BS<</W 2/S/B>>", FieldOutline::circle).decoration, "q Q\n");
}

TEST(FieldBox, ATurnedBoxRunsAlongItsOtherSide)
{
    const FieldBox left = boxOf("/MK<</R 90>>");
    EXPECT_EQ(left.size, (Size{40, 100}));
    EXPECT_EQ(left.matrix, (Matrix{0, 1, -1, 0, 100, 0}));
    const FieldBox over = boxOf("/MK<</R 180>>");
    EXPECT_EQ(over.size, (Size{100, 40}));
    EXPECT_EQ(over.matrix, (Matrix{-1, 0, 0, -1, 100, 40}));
    for (const char *turn : {"270", "-90", "630"}) {
        const FieldBox right = boxOf(std::string("/MK<</R ") + turn + ">>");
        EXPECT_EQ(right.size, (Size{40, 100})) << turn;
        EXPECT_EQ(right.matrix, (Matrix{0, -1, 1, 0, 0, 40})) << turn;
    }
}

TEST(FieldBox, EveryTurnedBoxComesToStandInItsPlace)
{
    for (const int turn : {0, 90, 180, 270, 360}) {
        const FieldBox box = boxOf("/MK<</R " + std::to_string(turn) + ">>");
        EXPECT_EQ(boundsOfTransformed(box.matrix, {0, 0, box.size.width, box.size.height}),
                  (Rect{0, 0, 100, 40}))
            << turn;
    }
}

TEST(FieldBox, OtherTurnsCountAsNone)
{
    for (const char *turn : {"45", "90.5", "(90)", "null"}) {
        const FieldBox box = boxOf(std::string("/MK<</R ") + turn + ">>");
        EXPECT_EQ(box.size, (Size{100, 40})) << turn;
        EXPECT_EQ(box.matrix, Matrix()) << turn;
    }
}

} // namespace tallyfold::pdf
