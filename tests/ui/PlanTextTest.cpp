#include "ui/text/PlanText.h"

#include "tests/ui/Plans.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::source;

TEST(PlanText, TheTotalsOfAPlan)
{
    StampSettings settings;
    settings.cover = CoverOption::skipNoNumber;
    const ProductionPlan plan({source(QStringLiteral("a.pdf"), 3), source(QStringLiteral("b.pdf"), 1),
                               source(QStringLiteral("c.pdf"), 0, SourceProblem::locked)},
                              settings);
    EXPECT_EQ(summaryOf(plan),
              (PlanSummary{QStringLiteral("3 files, 2 pages"), QStringLiteral("ABC000001 – ABC000002"),
                           QStringLiteral("2 skipped (listed in the index)")}));
    EXPECT_EQ(pagesToWrite(plan), 3);
}

TEST(PlanText, NothingNumberedHasNoRangeAndNothingSkippedIsNotTold)
{
    EXPECT_EQ(summaryOf(ProductionPlan({}, {})),
              (PlanSummary{QStringLiteral("0 files, 0 pages"), std::nullopt, std::nullopt}));
}

TEST(PlanText, TheStatusSaysWhatIsReady)
{
    EXPECT_EQ(statusOf(ProductionPlan({}, {})), QStringLiteral("No PDFs yet"));
    EXPECT_EQ(
        statusOf(ProductionPlan({source(QStringLiteral("a.pdf"), 100), source(QStringLiteral("b.pdf"), 19),
                                 source(QStringLiteral("c.pdf"), 1)},
                                {})),
        QStringLiteral("3 files, 120 pages ready"));
    EXPECT_EQ(statusOf(ProductionPlan({source(QStringLiteral("a.pdf"), 1)}, {})),
              QStringLiteral("1 file, 1 page ready"));
    EXPECT_EQ(statusOf(ProductionPlan({source(QStringLiteral("a.pdf"), 0, SourceProblem::locked),
                                       source(QStringLiteral("b.pdf"), 4, SourceProblem::encrypted)},
                                      {})),
              QStringLiteral("Nothing to stamp: the PDFs are password-protected"));
}

TEST(PlanText, ProgressIsCountedInPages)
{
    EXPECT_EQ(progressText(12, 340), QStringLiteral("Stamping… 12 of 340 pages"));
}

} // namespace tallyfold
