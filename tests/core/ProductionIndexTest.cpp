#include "core/ProductionIndex.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

SourceFile source(const QString &name, std::int64_t pages, std::optional<SourceProblem> problem = {})
{
    return {QUuid::createUuid(), "/in/" + name.toStdString(), name, pages, distantPast(), problem, {}};
}

const QString indexHead = QStringLiteral("File,Stamped Copy,First Bates,Last Bates,Pages,Status\r\n");
const QString logHead = QStringLiteral(
    "Bates Begin,Bates End,Date,Document Type,Author,Recipients,Privilege Asserted,Description,File\r\n");

} // namespace

TEST(ProductionIndex, AccountsForEveryFileAndTheLogForEveryCopy)
{
    const ProductionPlan plan({source(QStringLiteral("a.pdf"), 2),
                               source(QStringLiteral("b.pdf"), 4, SourceProblem::encrypted),
                               source(QStringLiteral("c.pdf"), 1)},
                              {});
    EXPECT_EQ(ProductionIndex::csv(plan, {}),
              indexHead + QStringLiteral("a.pdf,a.pdf,ABC000001,ABC000002,2,stamped\r\n"
                                         "b.pdf,,,,4,skipped: password-protected\r\n"
                                         "c.pdf,c.pdf,ABC000003,ABC000003,1,stamped\r\n"));
    EXPECT_EQ(ProductionIndex::privilegeLog(plan, {}),
              logHead +
                  QStringLiteral("ABC000001,ABC000002,,,,,,,a.pdf\r\nABC000003,ABC000003,,,,,,,c.pdf\r\n"));
}

TEST(ProductionIndex, EveryProblemHasItsStatus)
{
    const ProductionPlan plan({source(QStringLiteral("a.pdf"), 0, SourceProblem::unreadable),
                               source(QStringLiteral("b.pdf"), 0, SourceProblem::locked),
                               source(QStringLiteral("c.pdf"), 0, SourceProblem::empty),
                               source(QStringLiteral("d.pdf"), 0)},
                              {});
    EXPECT_EQ(ProductionIndex::csv(plan, {}),
              indexHead + QStringLiteral(
                              "a.pdf,,,,0,skipped: unreadable\r\nb.pdf,,,,0,skipped: password-protected\r\n"
                              "c.pdf,,,,0,skipped: empty\r\n"
                              "d.pdf,,,,0,\"skipped: cover page only, no number\"\r\n"));
}

TEST(ProductionIndex, ACountedCoverIsCopiedAndAnUncountedOneSkipped)
{
    StampSettings settings;
    settings.cover = CoverOption::skipKeepNumber;
    const ProductionPlan counted({source(QStringLiteral("a.pdf"), 1)}, settings);
    EXPECT_EQ(ProductionIndex::csv(counted, {}),
              indexHead +
                  QStringLiteral(
                      "a.pdf,a.pdf,ABC000001,ABC000001,1,\"copied: cover page only, number not shown\"\r\n"));
    settings.cover = CoverOption::skipNoNumber;
    const ProductionPlan uncounted({source(QStringLiteral("a.pdf"), 1)}, settings);
    EXPECT_EQ(ProductionIndex::csv(uncounted, {}),
              indexHead + QStringLiteral("a.pdf,,,,1,\"skipped: cover page only, no number\"\r\n"));
    EXPECT_EQ(ProductionIndex::privilegeLog(uncounted, {}), logHead);
}

TEST(ProductionIndex, AFailedCopyIsToldAndNotLogged)
{
    const ProductionPlan plan({source(QStringLiteral("a.pdf"), 2)}, {});
    EXPECT_EQ(ProductionIndex::csv(plan, {QStringLiteral("a.pdf")}),
              indexHead + QStringLiteral("a.pdf,,,,2,failed\r\n"));
    EXPECT_EQ(ProductionIndex::privilegeLog(plan, {QStringLiteral("a.pdf")}), logHead);
}

TEST(ProductionIndex, AFileThatIsSkippedHasNotFailedThoughOneOfItsNameHas)
{
    StampSettings settings;
    settings.cover = CoverOption::skipNoNumber;
    settings.order = FileOrder::manual;
    const QString name = QStringLiteral("a.pdf");
    const ProductionPlan plan({source(name, 2), source(name, 3, SourceProblem::encrypted),
                               source(name, 0, SourceProblem::unreadable), source(name, 1), source(name, 4)},
                              settings);
    EXPECT_EQ(ProductionIndex::csv(plan, {name}),
              indexHead + QStringLiteral("a.pdf,,,,2,failed\r\na.pdf,,,,3,skipped: password-protected\r\n"
                                         "a.pdf,,,,0,skipped: unreadable\r\n"
                                         "a.pdf,,,,1,\"skipped: cover page only, no number\"\r\n"
                                         "a.pdf,,,,4,failed\r\n"));
    EXPECT_EQ(ProductionIndex::privilegeLog(plan, {name}), logHead);
}

TEST(ProductionIndex, WhatIsSkippedIsKnownBeforeAnythingIsWritten)
{
    StampSettings settings;
    settings.cover = CoverOption::skipNoNumber;
    const ProductionPlan plan({source(QStringLiteral("a.pdf"), 1), source(QStringLiteral("b.pdf"), 2),
                               source(QStringLiteral("c.pdf"), 2, SourceProblem::locked),
                               source(QStringLiteral("d.pdf"), 0)},
                              settings);
    using ProductionIndex::skippedStatus;
    EXPECT_EQ(skippedStatus(plan.files[0]), QStringLiteral("skipped: cover page only, no number"));
    EXPECT_EQ(skippedStatus(plan.files[1]), std::nullopt);
    EXPECT_EQ(skippedStatus(plan.files[2]), QStringLiteral("skipped: password-protected"));
    EXPECT_EQ(skippedStatus(plan.files[3]), QStringLiteral("skipped: cover page only, no number"));
}

TEST(ProductionIndex, NamesAreGuardedAndQuoted)
{
    StampSettings settings;
    settings.order = FileOrder::manual;
    const ProductionPlan plan({source(QStringLiteral("a,b.pdf"), 1), source(QStringLiteral("c\"d.pdf"), 1),
                               source(QStringLiteral("=e.pdf"), 1)},
                              settings);
    EXPECT_EQ(ProductionIndex::csv(plan, {}),
              indexHead + QStringLiteral("\"a,b.pdf\",\"a,b.pdf\",ABC000001,ABC000001,1,stamped\r\n"
                                         "\"c\"\"d.pdf\",\"c\"\"d.pdf\",ABC000002,ABC000002,1,stamped\r\n"
                                         "'=e.pdf,'=e.pdf,ABC000003,ABC000003,1,stamped\r\n"));
}

} // namespace tallyfold
