#include "pdf/source/PageGeometry.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

namespace {

SourcePage page(const std::string &media, const std::string &crop = "null",
                const std::string &rotate = "null", const std::string &entries = "")
{
    const auto parsed = [](const std::string &syntax) { return QPDFObjectHandle::parse(syntax); };
    return {parsed("<<" + entries + ">>"), parsed("null"), parsed(media), parsed(crop), parsed(rotate)};
}

const Rect letter{0, 0, 612, 792};

} // namespace

TEST(PageGeometry, TheCropBoxIsClippedToTheMediaBox)
{
    EXPECT_EQ(geometryOf(page("[0 0 612 792]", "[10 20 582 752]")).visibleBox, (Rect{10, 20, 582, 752}));
    EXPECT_EQ(geometryOf(page("[0 0 612 792]", "[-50 -50 300 900]")).visibleBox, (Rect{0, 0, 300, 792}));
}

TEST(PageGeometry, CornersMayComeInAnyOrder)
{
    EXPECT_EQ(geometryOf(page("[612 792 0 0]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[1685 -1192 -1685 1192]")).visibleBox, (Rect{-1685, -1192, 1685, 1192}));
}

TEST(PageGeometry, BoxesThatMakeNoSenseAreReplaced)
{
    EXPECT_EQ(geometryOf(page("null")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 0 0 0]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 0 /X 792]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 0 612]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 0 1" + std::string(30, '0') + ".0 792]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 0 200 100]", "[5 5 5 5]")).visibleBox, (Rect{0, 0, 200, 100}));
    EXPECT_EQ(geometryOf(page("[0 0 200 100]", "[300 300 400 400]")).visibleBox, (Rect{0, 0, 200, 100}));
}

TEST(PageGeometry, ABoxNeedsAnAreaAndMayBeSmallerThanAPoint)
{
    EXPECT_EQ(geometryOf(page("[0 0 0 100]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 0 100 0]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 0 0.5 0.25]")).visibleBox, (Rect{0, 0, 0.5, 0.25}));
    EXPECT_EQ(geometryOf(page("[0 0 200 100]", "[50 0 50 100]")).visibleBox, (Rect{0, 0, 200, 100}));
    EXPECT_EQ(geometryOf(page("[0 0 200 100]", "[0 50 200 50]")).visibleBox, (Rect{0, 0, 200, 100}));
    EXPECT_EQ(geometryOf(page("[0 0 200 100]", "[200 0 300 100]")).visibleBox, (Rect{0, 0, 200, 100}));
}

TEST(PageGeometry, CoordinatesReachToTenMillion)
{
    EXPECT_EQ(geometryOf(page("[-10000000 0 10000000 1]")).visibleBox, (Rect{-1e7, 0, 1e7, 1}));
    EXPECT_EQ(geometryOf(page("[0 0 10000001 1]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 -10000001 1 1]")).visibleBox, letter);
    EXPECT_EQ(geometryOf(page("[0 0 1 1 77]")).visibleBox, (Rect{0, 0, 1, 1}));
}

TEST(PageGeometry, AnyMultipleOfNinetyTurnsThePage)
{
    const std::vector<std::pair<std::string, int>> turns{
        {"0", 0},     {"90", 90},   {"180", 180},  {"270", 270}, {"360", 0}, {"450", 90},
        {"-90", 270}, {"-270", 90}, {"-180", 180}, {"45", 0},    {"(x)", 0}, {"90.0", 90}};
    for (const auto &[written, expected] : turns) {
        EXPECT_EQ(geometryOf(page("[0 0 612 792]", "null", written)).rotation, expected) << written;
    }
}

TEST(PageGeometry, AQuarterTurnSwapsTheSides)
{
    EXPECT_EQ(geometryOf(page("[0 0 612 792]", "[12 0 612 792]", "-270")).displaySize(), (Size{792, 600}));
    EXPECT_EQ(geometryOf(page("[0 0 612 792]", "[12 0 612 792]", "180")).displaySize(), (Size{600, 792}));
}

TEST(PageGeometry, TheUserUnitScalesTheSizeInPoints)
{
    const PageGeometry geometry = geometryOf(page("[0 0 100 200]", "null", "null", "/UserUnit 2.5"));
    EXPECT_EQ(geometry.displaySize(), (Size{250, 500}));
    EXPECT_EQ(geometry.uprightSize(), (Size{100, 200}));
    for (const char *unit : {"-1", "0", "(2)", "10000000"}) {
        EXPECT_EQ(
            geometryOf(page("[0 0 100 200]", "null", "null", std::string("/UserUnit ") + unit)).userUnit, 1)
            << unit;
    }
    EXPECT_EQ(geometryOf(page("[0 0 100 200]", "null", "null", "/UserUnit 0.5")).userUnit, 0.5);
}

TEST(PageGeometry, TheCornerShownAtTheLowerLeftComesToTheOrigin)
{
    const std::vector<std::pair<std::string, Point>> corners{
        {"0", {10, 20}}, {"90", {110, 20}}, {"180", {110, 220}}, {"270", {10, 220}}};
    for (const auto &[rotate, corner] : corners) {
        const PageGeometry geometry = geometryOf(page("[10 20 110 220]", "null", rotate));
        EXPECT_EQ(transform(geometry.toUpright(), corner), (Point{0, 0})) << rotate;
        const Size size = geometry.uprightSize();
        EXPECT_EQ(boundsOfTransformed(geometry.toUpright(), geometry.visibleBox),
                  (Rect{0, 0, size.width, size.height}))
            << rotate;
    }
}

} // namespace tallyfold::pdf
