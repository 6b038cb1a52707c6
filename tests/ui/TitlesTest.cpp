#include "ui/text/Titles.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(Titles, OfEveryCase)
{
    EXPECT_EQ(titleOf(StampPosition::topLeft), QStringLiteral("Top left"));
    EXPECT_EQ(titleOf(StampPosition::bottomCenter), QStringLiteral("Bottom center"));
    EXPECT_EQ(titleOf(CoverOption::stampAll), QStringLiteral("Stamp every page"));
    EXPECT_EQ(titleOf(CoverOption::skipKeepNumber),
              QStringLiteral("Leave the first page blank, but count it"));
    EXPECT_EQ(titleOf(CoverOption::skipNoNumber),
              QStringLiteral("Leave the first page blank and don’t count it"));
    EXPECT_EQ(titleOf(FileOrder::name), QStringLiteral("By name"));
    EXPECT_EQ(titleOf(FileOrder::modified), QStringLiteral("Oldest first"));
    EXPECT_EQ(titleOf(FileOrder::manual), QStringLiteral("As listed (drag to reorder)"));
    EXPECT_EQ(titleOf(OutputNaming::original), QStringLiteral("Original name"));
    EXPECT_EQ(titleOf(OutputNaming::batesFirst), QStringLiteral("First Bates number"));
    EXPECT_EQ(titleOf(OutputNaming::batesRange), QStringLiteral("Bates range"));
    EXPECT_EQ(titleOf(OutputNaming::batesAndOriginal), QStringLiteral("First Bates number + original name"));
}

TEST(Titles, LengthsAreShownInPointsAndInches)
{
    EXPECT_EQ(marginText(18), QStringLiteral("18 pt (0.25 in)"));
    EXPECT_EQ(marginText(144), QStringLiteral("144 pt (2.00 in)"));
    EXPECT_EQ(marginText(0), QStringLiteral("0 pt (0.00 in)"));
    EXPECT_EQ(fontSizeText(10), QStringLiteral("10 pt"));
}

} // namespace tallyfold
