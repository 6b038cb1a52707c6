#include "ui/text/FormWarnings.h"

#include "tests/ui/Plans.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::source;

TEST(FormWarnings, NumbersThatOutgrowTheirDigitsOfferMore)
{
    StampSettings settings;
    settings.startNumber = 999'995;
    const std::vector<SourceFile> sources{source(QStringLiteral("a.pdf"), 10)};
    const auto warning = digitsWarning(ProductionPlan(sources, settings), settings);
    ASSERT_TRUE(warning);
    EXPECT_EQ(
        warning->text,
        QStringLiteral("Numbers reach ABC1000004, longer than 6 digits, so copies named by Bates number "
                       "won’t sort in order in the file manager."));
    EXPECT_EQ(warning->action, QStringLiteral("Use 7 Digits"));
    warning->mend(settings);
    EXPECT_EQ(settings.digits, 7);
    EXPECT_FALSE(digitsWarning(ProductionPlan(sources, settings), settings));
}

TEST(FormWarnings, AnEmptyListHasNone)
{
    StampSettings settings;
    settings.startNumber = 99'999'999;
    settings.cover = CoverOption::skipNoNumber;
    const ProductionPlan plan({}, settings);
    EXPECT_FALSE(digitsWarning(plan, settings));
    EXPECT_FALSE(earlierNumberWarning(plan, settings));
    EXPECT_FALSE(singlePageWarning(plan, settings));
}

TEST(FormWarnings, EarlierNumbersUnderTheBoxAreTold)
{
    StampSettings settings;
    std::vector<SourceFile> sources{source(QStringLiteral("a.pdf"), 1),
                                    source(QStringLiteral("b.pdf"), 1, {}, QStringLiteral("ACME000017"))};
    EXPECT_EQ(
        earlierNumberWarning(ProductionPlan(sources, settings), settings)->text,
        QStringLiteral(
            "One file already seems to carry a Bates number (ACME000017). The white box would cover it."));
    sources.push_back(source(QStringLiteral("c.pdf"), 1, {}, QStringLiteral("ACME000020")));
    const auto warning = earlierNumberWarning(ProductionPlan(sources, settings), settings);
    EXPECT_EQ(warning->text,
              QStringLiteral("2 files already seem to carry Bates numbers (ACME000017). The white box would "
                             "cover them."));
    EXPECT_EQ(warning->action, QStringLiteral("Turn Off the White Box"));
    warning->mend(settings);
    EXPECT_FALSE(earlierNumberWarning(ProductionPlan(sources, settings), settings));
}

TEST(FormWarnings, FilesOfACoverAloneAreTold)
{
    StampSettings settings;
    settings.cover = CoverOption::skipKeepNumber;
    std::vector<SourceFile> sources{source(QStringLiteral("a.pdf"), 1), source(QStringLiteral("b.pdf"), 2)};
    const auto text = [&] { return singlePageWarning(ProductionPlan(sources, settings), settings)->text; };
    EXPECT_EQ(text(),
              QStringLiteral(
                  "One file has a single page: it keeps its number but its copy shows no stamp (the index "
                  "says so)."));
    settings.cover = CoverOption::skipNoNumber;
    EXPECT_EQ(text(),
              QStringLiteral(
                  "One file has a single page: as an uncounted cover it would get no number and no stamp, "
                  "so it’s left out (listed as skipped in the index)."));
    sources.push_back(source(QStringLiteral("c.pdf"), 1));
    EXPECT_EQ(text(),
              QStringLiteral(
                  "2 files have a single page: as uncounted covers they’d get no number and no stamp, so "
                  "they’re left out (listed as skipped in the index)."));
    settings.cover = CoverOption::skipKeepNumber;
    EXPECT_EQ(text(),
              QStringLiteral(
                  "2 files have a single page: they keep their numbers but their copies show no stamp (the "
                  "index says so)."));
    const auto warning = singlePageWarning(ProductionPlan(sources, settings), settings);
    EXPECT_EQ(warning->action, QStringLiteral("Stamp Every Page"));
    warning->mend(settings);
    EXPECT_FALSE(singlePageWarning(ProductionPlan(sources, settings), settings));
}

} // namespace tallyfold
