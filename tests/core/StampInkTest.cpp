#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <iterator>
#include <regex>

namespace tallyfold {

using tests::TemporaryFolder;

namespace {

/// The uncompressed copy of a page that is stamped in `color`.
std::string stampedIn(const StampColor &color, const QString &legend = {})
{
    const TemporaryFolder folder;
    tests::writeSample(folder / "a.pdf", 1);
    StampSettings settings;
    settings.color = color;
    settings.legend = legend;
    const ProductionPlan plan({classify(folder / "a.pdf")}, settings);
    Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
    return tests::runTool({"qpdf", "--qdf", "--object-streams=disable", folder / "copy.pdf", "-"}).output;
}

bool has(const std::string &copy, const std::string &text)
{
    return copy.find(text) != std::string::npos;
}

} // namespace

TEST(StampInk, AColourIsWrittenAsItIs)
{
    const std::string copy = stampedIn({0.25, 0.5, 0.75, 1});
    EXPECT_TRUE(has(copy, "\n0.25 0.5 0.75 rg\n")) << copy;
    EXPECT_FALSE(has(copy, "/ca "));
    EXPECT_FALSE(has(copy, " gs\n"));
}

TEST(StampInk, BeforeEachLineStandsABreakBelowThePageFurtherDownThanTheLast)
{
    const std::string copy = stampedIn(StampColor::black(), QStringLiteral("CONFIDENTIAL"));
    EXPECT_TRUE(has(copy, "\nq /F Do\nq ")) << copy;
    EXPECT_TRUE(has(copy, "\nQ\nq 1 0 0 1 0 -9 cm /F Do Q\nq ")) << copy;
    EXPECT_FALSE(has(copy, "-18 cm /F")) << "there are two lines";
    std::smatch box;
    ASSERT_TRUE(
        std::regex_search(copy, box, std::regex("/BBox \\[\\s+0\\s+-32001\\s+([0-9.]+)\\s+-31999\\s+\\]")))
        << copy;
    const double spaces = 2 * 0.278; // In Helvetica at a font size of 1.
    EXPECT_NEAR(std::stod(box[1]), spaces + 1, 0.01) << "nothing of them is cut off";
    EXPECT_TRUE(has(copy, "/Span <</ActualText()>>BDC\n") || has(copy, "/Span<</ActualText()>>BDC\n"));
}

TEST(StampInk, ComponentsBeyondTheirRangeAreAtItsEnds)
{
    EXPECT_TRUE(has(stampedIn({1.05, -0.05, 7, 1}), "\n1 0 1 rg\n"));
    EXPECT_TRUE(has(stampedIn({0, 0, 0, -3}), "/ca 0\n"));
    EXPECT_FALSE(has(stampedIn({0, 0, 0, 3}), "/ca "));
}

TEST(StampInk, OpacityIsAStateThatTheTextIsDrawnIn)
{
    const std::string copy = stampedIn({0, 0, 0, 0.5});
    EXPECT_TRUE(has(copy, "/ca 0.5\n")) << copy;
    EXPECT_TRUE(has(copy, "/Type /ExtGState\n")) << copy;
    EXPECT_TRUE(has(copy, "0 0 0 rg\n/G gs\n")) << copy;
}

TEST(StampInk, EveryLineHasItsWhiteBoxAndLeavesNoColourBehind)
{
    const std::string copy = stampedIn({0.25, 0.5, 0.75, 1}, QStringLiteral("Legend"));
    const std::regex line("q 1 g [-0-9. ]+ re f\n0\\.25 0\\.5 0\\.75 rg\n[^Q]*Q\n");
    EXPECT_EQ(std::distance(std::sregex_iterator(copy.begin(), copy.end(), line), std::sregex_iterator()), 2)
        << copy;
}

TEST(StampInk, CoordinatesHaveFourDecimals)
{
    const TemporaryFolder folder;
    tests::writeSample(folder / "a.pdf", 1);
    StampSettings settings;
    settings.batesPosition = StampPosition::bottomLeft;
    settings.margin = 18.12344;
    const ProductionPlan plan({classify(folder / "a.pdf")}, settings);
    Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
    EXPECT_TRUE(has(tests::contentOfPage(folder / "copy.pdf", 1), "q 1 g 16.1234 16.1234 "));
}

} // namespace tallyfold
