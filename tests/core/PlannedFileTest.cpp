#include "core/ProductionPlan.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

PlannedFile file(const std::vector<PlannedPage> &pages)
{
    PlannedFile planned;
    planned.source.pageCount = static_cast<std::int64_t>(pages.size());
    planned.pages = pages;
    return planned;
}

constexpr std::nullopt_t none = std::nullopt;

} // namespace

TEST(PlannedFile, ItsNumbersAreThoseOfThePagesThatHaveOne)
{
    const PlannedFile within = file({{none, false}, {7, true}, {8, false}, {none, false}});
    EXPECT_EQ(within.firstNumber(), 7);
    EXPECT_EQ(within.lastNumber(), 8);
    const PlannedFile without = file({{none, false}, {none, true}});
    EXPECT_EQ(without.firstNumber(), none);
    EXPECT_EQ(without.lastNumber(), none);
    EXPECT_EQ(file({}).firstNumber(), none);
    EXPECT_EQ(file({}).lastNumber(), none);
}

TEST(PlannedFile, NoPageIsStampedUnlessItIsSaid)
{
    EXPECT_EQ(PlannedPage(), (PlannedPage{none, false}));
}

TEST(PlannedFile, ItIsSkippedOnlyWhenNoPageIsStampedOrNumbered)
{
    EXPECT_TRUE(file({{none, false}, {none, false}}).isSkipped());
    EXPECT_FALSE(file({{none, false}, {none, true}}).isSkipped());
    EXPECT_FALSE(file({{none, false}, {7, false}}).isSkipped());
    EXPECT_FALSE(file({}).isSkipped());
}

TEST(PlannedFile, ItIsCoverAloneWhenNoPageIsStamped)
{
    EXPECT_TRUE(file({{none, false}}).isCoverOnly());
    EXPECT_TRUE(file({{7, false}}).isCoverOnly());
    EXPECT_FALSE(file({{7, false}, {none, true}}).isCoverOnly());
    EXPECT_FALSE(file({}).isCoverOnly());
}

TEST(PlannedFile, ItIsStampableWithPagesAndWithoutAProblem)
{
    EXPECT_FALSE(file({}).isStampable());
    PlannedFile planned = file({{7, true}});
    EXPECT_TRUE(planned.isStampable());
    planned.source.problem = SourceProblem::encrypted;
    EXPECT_FALSE(planned.isStampable());
}

} // namespace tallyfold
