#include "core/StampLayout.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

constexpr pdf::Size letter{612, 792};

MeasuredLine line(StampPosition position, double width = 100, double ascent = 8, double descent = 2)
{
    return {position, width, ascent, descent};
}

} // namespace

TEST(StampLayout, LinesStandAtTheirMargins)
{
    const std::vector<MeasuredLine> lines{line(StampPosition::topLeft), line(StampPosition::topCenter),
                                          line(StampPosition::bottomRight)};
    const std::vector<PlacedLine> placed = layOut(lines, letter, 18, 2.5);
    ASSERT_EQ(placed.size(), 3U);
    EXPECT_EQ(placed[0].x, 18);
    EXPECT_EQ(placed[0].baseline, 792 - 18 - 8);
    EXPECT_EQ(placed[1].x, 256);
    EXPECT_EQ(placed[2].x, 612 - 18 - 100);
    EXPECT_EQ(placed[2].baseline, 18 + 2);
}

TEST(StampLayout, EverySpotHasItsPlaceAndItsBox)
{
    std::vector<MeasuredLine> lines;
    for (const StampPosition position : allStampPositions) {
        lines.push_back(line(position));
    }
    const std::vector<PlacedLine> placed = layOut(lines, letter, 18, 2.5);
    ASSERT_EQ(placed.size(), 6U);
    for (std::size_t index = 0; index < 6; ++index) {
        const double x = index % 3 == 0 ? 18 : index % 3 == 1 ? 256 : 494;
        const double baseline = index < 3 ? 766 : 20;
        EXPECT_EQ(placed[index].index, index);
        EXPECT_EQ(placed[index].x, x) << index;
        EXPECT_EQ(placed[index].baseline, baseline) << index;
        EXPECT_EQ(placed[index].box, (pdf::Rect{x - 2, baseline - 4, x + 102, baseline + 10})) << index;
    }
}

TEST(StampLayout, LinesOfOneSpotStackDownwardInTheirOrder)
{
    const std::vector<MeasuredLine> lines(3, line(StampPosition::bottomRight));
    const std::vector<PlacedLine> placed = layOut(lines, letter, 18, 2.5);
    EXPECT_EQ(placed[2].baseline, 18 + 2) << "the lowest line's descent touches the margin";
    EXPECT_EQ(placed[1].baseline, 18 + 2 + 12.5);
    EXPECT_EQ(placed[0].baseline, 18 + 2 + 25);
    const std::vector<MeasuredLine> top(3, line(StampPosition::topRight));
    EXPECT_EQ(layOut(top, letter, 18, 2.5)[0].baseline, 792 - 18 - 8)
        << "the highest ascent touches the margin";
}

TEST(StampLayout, AStackTallerThanThePageIsPinnedToItsTop)
{
    const std::vector<MeasuredLine> lines(3, line(StampPosition::bottomLeft, 50, 30, 10));
    EXPECT_EQ(layOut(lines, {200, 100}, 18, 10)[0].baseline, 100 - 30);
    EXPECT_EQ(layOut(std::vector{line(StampPosition::topLeft, 50, 30, 10)}, {200, 50}, 144, 10)[0].baseline,
              10)
        << "a wide margin does not push a line off the bottom";
}

TEST(StampLayout, BoxesAreTwoPointsLargerThanTheTextAndOverlapByOnePoint)
{
    const std::vector<MeasuredLine> lines(2, line(StampPosition::bottomLeft, 100, 9, 3));
    const std::vector<PlacedLine> placed = layOut(lines, letter, 18, 3);
    EXPECT_EQ(placed[0].box.width(), 104);
    EXPECT_EQ(placed[0].box.height(), 9 + 3 + 4);
    EXPECT_EQ(placed[1].box.maxY - placed[0].box.minY, 1);
}

TEST(StampLayout, SpotsAreDrawnFromTheTopLeftToTheBottomRight)
{
    std::vector<MeasuredLine> lines;
    for (auto position = allStampPositions.rbegin(); position != allStampPositions.rend(); ++position) {
        lines.push_back(line(*position));
    }
    const std::vector<PlacedLine> placed = layOut(lines, letter, 18, 2.5);
    for (std::size_t index = 0; index < placed.size(); ++index) {
        EXPECT_EQ(placed[index].index, 5 - index);
    }
}

} // namespace tallyfold
