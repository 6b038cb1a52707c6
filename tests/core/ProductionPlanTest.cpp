#include "core/ProductionPlan.h"

#include "core/OutputName.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

SourceFile source(const QString &name, std::int64_t pages, std::optional<SourceProblem> problem = {})
{
    return {QUuid::createUuid(), "/in/" + name.toStdString(), name, pages, distantPast(), problem, {}};
}

QStringList names(const std::vector<const PlannedFile *> &files)
{
    QStringList result;
    for (const PlannedFile *file : files) {
        result.append(file->outputName);
    }
    return result;
}

QStringList outputNames(const ProductionPlan &plan)
{
    QStringList result;
    for (const PlannedFile &file : plan.files) {
        result.append(file.outputName);
    }
    return result;
}

StampSettings with(OutputNaming naming, CoverOption cover = CoverOption::stampAll,
                   FileOrder order = FileOrder::name)
{
    StampSettings settings;
    settings.naming = naming;
    settings.cover = cover;
    settings.order = order;
    return settings;
}

std::vector<SourceFile> threeFiles()
{
    return {source(QStringLiteral("b.pdf"), 3), source(QStringLiteral("a.pdf"), 2),
            source(QStringLiteral("c.pdf"), 0, SourceProblem::locked)};
}

std::vector<SourceFile> briefAndMemo()
{
    return {source(QStringLiteral("brief.pdf"), 3), source(QStringLiteral("memo.pdf"), 1)};
}

using Pages = std::vector<PlannedPage>;

} // namespace

TEST(ProductionPlan, NumbersRunOnFromFileToFile)
{
    const ProductionPlan plan(threeFiles(), with(OutputNaming::batesRange));
    EXPECT_EQ(plan.files[0].pages, (Pages{{1, true}, {2, true}}));
    EXPECT_EQ(plan.files[1].pages, (Pages{{3, true}, {4, true}, {5, true}}));
    EXPECT_TRUE(plan.files[2].pages.empty());
    EXPECT_EQ(outputNames(plan),
              (QStringList{QStringLiteral("ABC000001-ABC000002.pdf"),
                           QStringLiteral("ABC000003-ABC000005.pdf"), QStringLiteral("c.pdf")}));
    EXPECT_EQ(plan.rangeText(), QStringLiteral("ABC000001 – ABC000005"));
    EXPECT_EQ(plan.nextNumber(), 6);
    ASSERT_TRUE(plan.passwordNotice());
    EXPECT_EQ(plan.passwordNotice()->names, QStringList{QStringLiteral("c.pdf")});
    EXPECT_FALSE(plan.passwordNotice()->nothingElseToStamp);
}

TEST(ProductionPlan, CopiesCanBeNamedByNumberAndOriginal)
{
    EXPECT_EQ(outputNames(ProductionPlan(threeFiles(), with(OutputNaming::batesAndOriginal))),
              (QStringList{QStringLiteral("ABC000001 a.pdf"), QStringLiteral("ABC000003 b.pdf"),
                           QStringLiteral("c.pdf")}));
}

TEST(ProductionPlan, CoverPagesCanBeCountedWithoutBeingStamped)
{
    const ProductionPlan plan(briefAndMemo(),
                              with(OutputNaming::batesFirst, CoverOption::skipKeepNumber, FileOrder::manual));
    EXPECT_EQ(plan.files[0].pages, (Pages{{1, false}, {2, true}, {3, true}}));
    EXPECT_EQ(plan.files[1].pages, (Pages{{4, false}}));
    EXPECT_EQ(outputNames(plan),
              (QStringList{QStringLiteral("ABC000001.pdf"), QStringLiteral("ABC000004.pdf")}));
    EXPECT_EQ(plan.stampedFiles().size(), 2U);
    EXPECT_EQ(names(plan.coverOnlyFiles()), QStringList{QStringLiteral("ABC000004.pdf")});
    EXPECT_TRUE(plan.skippedFiles().empty());
    EXPECT_EQ(plan.nextNumber(), 5);
}

TEST(ProductionPlan, CoverPagesCanBeLeftOutOfTheCount)
{
    const ProductionPlan plan(briefAndMemo(),
                              with(OutputNaming::batesFirst, CoverOption::skipNoNumber, FileOrder::manual));
    EXPECT_EQ(plan.files[0].pages, (Pages{{std::nullopt, false}, {1, true}, {2, true}}));
    EXPECT_EQ(plan.files[1].pages, (Pages{{std::nullopt, false}}));
    EXPECT_EQ(outputNames(plan), (QStringList{QStringLiteral("ABC000001.pdf"), QStringLiteral("memo.pdf")}));
    EXPECT_EQ(names(plan.skippedFiles()), QStringList{QStringLiteral("memo.pdf")});
    EXPECT_EQ(names(plan.stampedFiles()), QStringList{QStringLiteral("ABC000001.pdf")});
    EXPECT_EQ(plan.rangeText(), QStringLiteral("ABC000001 – ABC000002"));
}

TEST(ProductionPlan, NoSourcesMakeAnEmptyPlan)
{
    StampSettings settings;
    settings.startNumber = 77;
    const ProductionPlan plan({}, settings);
    EXPECT_TRUE(plan.files.empty());
    EXPECT_FALSE(plan.firstNumber() || plan.lastNumber() || plan.rangeText() || plan.passwordNotice());
    EXPECT_EQ(plan.nextNumber(), 77);
}

TEST(ProductionPlan, NumbersThatOutgrowTheirDigitsAreWrittenInFull)
{
    StampSettings settings;
    settings.startNumber = 999'999'999;
    const ProductionPlan plan({source(QStringLiteral("a.pdf"), 3)}, settings);
    EXPECT_EQ(plan.lastNumber(), 1'000'000'001);
    EXPECT_EQ(plan.rangeText(), QStringLiteral("ABC999999999 – ABC1000000001"));
    EXPECT_EQ(plan.digitsNeeded(), 10);
    EXPECT_TRUE(plan.outgrowsDigits());
    EXPECT_FALSE(ProductionPlan({}, {}).outgrowsDigits());
}

TEST(ProductionPlan, ASingleNumberIsARangeToo)
{
    StampSettings settings;
    settings.startNumber = 7;
    EXPECT_EQ(ProductionPlan({source(QStringLiteral("a.pdf"), 1)}, settings).rangeText(),
              QStringLiteral("ABC000007 – ABC000007"));
}

TEST(ProductionPlan, NamesThatClashAreToldOnceAsFirstSpelled)
{
    const ProductionPlan plan({source(QStringLiteral("Report.pdf"), 1),
                               source(QStringLiteral("report.PDF"), 1),
                               source(QStringLiteral("REPORT.pdf"), 0, SourceProblem::empty),
                               source(QStringLiteral("other.pdf"), 1)},
                              with(OutputNaming::original, CoverOption::stampAll, FileOrder::manual));
    EXPECT_EQ(plan.duplicateOutputNames(), QStringList{QStringLiteral("Report.pdf")});
}

TEST(ProductionPlan, FilesAreOrderedByNameNaturally)
{
    const ProductionPlan plan({source(QStringLiteral("File 10.pdf"), 1),
                               source(QStringLiteral("File 2.pdf"), 1),
                               source(QStringLiteral("file 1.pdf"), 1)},
                              {});
    EXPECT_EQ(outputNames(plan), (QStringList{QStringLiteral("file 1.pdf"), QStringLiteral("File 2.pdf"),
                                              QStringLiteral("File 10.pdf")}));
}

TEST(ProductionPlan, FilesAreOrderedByDateAndEqualDatesKeepTheirOrder)
{
    std::vector<SourceFile> sources{source(QStringLiteral("z.pdf"), 1), source(QStringLiteral("y.pdf"), 1),
                                    source(QStringLiteral("x.pdf"), 1)};
    sources[0].modified = QDateTime::fromSecsSinceEpoch(2000);
    sources[1].modified = QDateTime::fromSecsSinceEpoch(1000);
    sources[2].modified = QDateTime::fromSecsSinceEpoch(2000);
    EXPECT_EQ(outputNames(ProductionPlan(
                  sources, with(OutputNaming::original, CoverOption::stampAll, FileOrder::modified))),
              (QStringList{QStringLiteral("y.pdf"), QStringLiteral("z.pdf"), QStringLiteral("x.pdf")}));
}

TEST(ProductionPlan, AnUnreadableSourceBetweenTwoGoodOnesBreaksNoNumbers)
{
    const ProductionPlan plan({source(QStringLiteral("a.pdf"), 2),
                               source(QStringLiteral("b.pdf"), 0, SourceProblem::unreadable),
                               source(QStringLiteral("c.pdf"), 1)},
                              {});
    EXPECT_EQ(plan.files[2].pages, (Pages{{3, true}}));
}

TEST(ProductionPlan, TheSettingsOfAPlanAreNormalised)
{
    StampSettings settings;
    settings.startNumber = -5;
    EXPECT_EQ(ProductionPlan({}, settings).settings.startNumber, 0);
}

TEST(PasswordNotice, TheShortListHasAtLeastOneName)
{
    PasswordNotice notice;
    notice.names = {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"),
                    QStringLiteral("5")};
    EXPECT_EQ(notice.shortList(0), (PasswordNotice::ShortList{{QStringLiteral("1")}, 4}));
    EXPECT_EQ(notice.shortList(9).more, 0);
    EXPECT_EQ(notice.count(), 5);
}

TEST(PasswordNotice, ItSaysWhenNothingElseIsLeft)
{
    const ProductionPlan plan({source(QStringLiteral("a.pdf"), 3, SourceProblem::encrypted)}, {});
    EXPECT_TRUE(plan.passwordNotice()->nothingElseToStamp);
}

TEST(OutputName, NamesAreCleaned)
{
    const std::vector<std::pair<QString, QString>> cases{
        {QStringLiteral("Scan: 1/2"), QStringLiteral("Scan- 1-2.pdf")},
        {QStringLiteral(".pdf"), QStringLiteral("pdf.pdf")},
        {QStringLiteral("...x.PDF"), QStringLiteral("x.PDF")},
        {QStringLiteral(" a\nb "), QStringLiteral("a b.pdf")},
        {QStringLiteral(""), QStringLiteral("Document.pdf")},
        {QStringLiteral("..."), QStringLiteral("Document.pdf")},
    };
    for (const auto &[given, cleaned] : cases) {
        EXPECT_EQ(cleanedFileName(given), cleaned) << qPrintable(given);
    }
}

TEST(OutputName, APrefixThatNoFileNameCanHoldIsCleanedToo)
{
    StampSettings settings = with(OutputNaming::batesFirst);
    settings.prefix = QStringLiteral("../A:");
    EXPECT_EQ(outputNames(ProductionPlan({source(QStringLiteral("a.pdf"), 1)}, settings)),
              QStringList{QStringLiteral("-A-000001.pdf")});
}

} // namespace tallyfold
