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
    EXPECT_EQ(names(plan.coverOnlyFiles()), QStringList{QStringLiteral("memo.pdf")})
        << "a skipped file is only a cover too";
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

TEST(ProductionPlan, NumbersOutgrowTheirDigitsWithTheFirstThatIsWider)
{
    const auto ending = [](std::int64_t last) {
        StampSettings settings;
        settings.startNumber = last - 1;
        return ProductionPlan({source(QStringLiteral("a.pdf"), 2)}, settings);
    };
    EXPECT_EQ(ending(999'999).digitsNeeded(), 6);
    EXPECT_FALSE(ending(999'999).outgrowsDigits());
    EXPECT_EQ(ending(1'000'000).digitsNeeded(), 7);
    EXPECT_TRUE(ending(1'000'000).outgrowsDigits());
    EXPECT_FALSE(ending(99'999).outgrowsDigits()) << "narrower is no wider";
}

TEST(ProductionPlan, TheStartNumberNeedsItsDigitsThoughNothingIsNumbered)
{
    StampSettings settings;
    settings.startNumber = 1'000'000;
    EXPECT_EQ(ProductionPlan({}, settings).digitsNeeded(), 7);
    EXPECT_TRUE(ProductionPlan({}, settings).outgrowsDigits());
    settings.cover = CoverOption::skipNoNumber;
    EXPECT_EQ(ProductionPlan({source(QStringLiteral("a.pdf"), 1)}, settings).digitsNeeded(), 7);
    settings.startNumber = 0;
    EXPECT_EQ(ProductionPlan({}, settings).digitsNeeded(), 1);
}

TEST(ProductionPlan, ACopyOfOneNumberIsCalledByItAlone)
{
    EXPECT_EQ(
        outputNames(ProductionPlan({source(QStringLiteral("a.pdf"), 1), source(QStringLiteral("b.pdf"), 2)},
                                   with(OutputNaming::batesRange))),
        (QStringList{QStringLiteral("ABC000001.pdf"), QStringLiteral("ABC000002-ABC000003.pdf")}));
    EXPECT_EQ(outputNames(ProductionPlan({source(QStringLiteral("a.pdf"), 2)},
                                         with(OutputNaming::batesRange, CoverOption::skipNoNumber))),
              QStringList{QStringLiteral("ABC000001.pdf")})
        << "the cover has none";
}

TEST(ProductionPlan, TheLastExtensionGoesWhereANumberStandsBeforeTheName)
{
    const std::vector<std::pair<QString, QString>> cases{
        {QStringLiteral("A.PDF"), QStringLiteral("A.pdf")},
        {QStringLiteral("a.Pdf"), QStringLiteral("a.pdf")},
        {QStringLiteral("a.pdf.PDF"), QStringLiteral("a.pdf.pdf")},
        {QStringLiteral("v1.2 final.pdf"), QStringLiteral("v1.2 final.pdf")},
        {QStringLiteral("report"), QStringLiteral("report.pdf")},
        {QStringLiteral("a.txt"), QStringLiteral("a.txt.pdf")},
    };
    for (const auto &[given, named] : cases) {
        EXPECT_EQ(outputNames(ProductionPlan({source(given, 1)}, with(OutputNaming::batesAndOriginal))),
                  QStringList{QStringLiteral("ABC000001 ") + named});
    }
    EXPECT_EQ(outputNames(ProductionPlan({source(QStringLiteral("A.PDF"), 1)}, {})),
              QStringList{QStringLiteral("A.PDF")})
        << "alone it keeps its letter case";
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

TEST(ProductionPlan, NamesThatClashAreToldInTheOrderOfThePlan)
{
    std::vector<SourceFile> sources;
    for (const char *name :
         {"m.pdf", "Z.pdf", "b.pdf", "a.pdf", "B.PDF", "z.pdf", "A.pdf", "y.pdf", "Z.PDF"}) {
        sources.push_back(source(QString::fromLatin1(name), 1));
    }
    const ProductionPlan plan(sources,
                              with(OutputNaming::original, CoverOption::stampAll, FileOrder::manual));
    EXPECT_EQ(plan.duplicateOutputNames(),
              (QStringList{QStringLiteral("Z.pdf"), QStringLiteral("b.pdf"), QStringLiteral("a.pdf")}));
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
    const auto order = [&sources](const FileDate &first, const FileDate &second, const FileDate &third) {
        sources[0].modified = first;
        sources[1].modified = second;
        sources[2].modified = third;
        return outputNames(ProductionPlan(
            sources, with(OutputNaming::original, CoverOption::stampAll, FileOrder::modified)));
    };
    const QStringList yzx{QStringLiteral("y.pdf"), QStringLiteral("z.pdf"), QStringLiteral("x.pdf")};
    EXPECT_EQ(order({2000, 0}, {1000, 0}, {2000, 0}), yzx);
    EXPECT_EQ(order({1000, 1}, {1000, 0}, {1000, 2}), yzx) << "nanoseconds decide";
    EXPECT_EQ(order({1000, 0}, {999, 999'999'999}, {1000, 1}), yzx) << "after the seconds";
    EXPECT_EQ(order({-1, 0}, distantPast(), {0, 0}), yzx) << "a date that cannot be read is the oldest";
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
    EXPECT_EQ(ProductionPlan({}, settings).settings->startNumber, 0);
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
        {QStringLiteral("a\u2028b\u2029c"), QStringLiteral("a b c.pdf")},
        {QStringLiteral(""), QStringLiteral("Document.pdf")},
        {QStringLiteral("..."), QStringLiteral("Document.pdf")},
    };
    for (const auto &[given, cleaned] : cases) {
        EXPECT_EQ(cleanedFileName(given), cleaned) << qPrintable(given);
    }
}

TEST(OutputName, NoControlCharacterGetsIntoAName)
{
    for (char16_t unit = 0; unit <= 0x9F; ++unit) {
        const QChar character(unit);
        if (character.category() != QChar::Other_Control) {
            continue;
        }
        EXPECT_EQ(cleanedFileName(u'a' + QString(character) + QStringLiteral("b.pdf")),
                  QStringLiteral("a b.pdf"))
            << int{unit};
        EXPECT_EQ(cleanedFileName(character + QStringLiteral(".x.pdf") + character), QStringLiteral("x.pdf"))
            << int{unit};
        EXPECT_EQ(cleanedFileName(character), QStringLiteral("Document.pdf")) << int{unit};
    }
}

TEST(OutputName, ANulInAPrefixCutsNoName)
{
    for (const OutputNaming naming :
         {OutputNaming::batesFirst, OutputNaming::batesRange, OutputNaming::batesAndOriginal}) {
        StampSettings settings = with(naming);
        settings.prefix = QStringLiteral("A") + QChar(0) + QStringLiteral("B");
        settings.suffix = QChar(0);
        for (const QString &name :
             outputNames(ProductionPlan({source(QStringLiteral("a.pdf"), 2)}, settings))) {
            EXPECT_FALSE(name.contains(QChar(0))) << qPrintable(name);
            EXPECT_TRUE(name.startsWith(QStringLiteral("A B000001 "))) << qPrintable(name);
        }
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
