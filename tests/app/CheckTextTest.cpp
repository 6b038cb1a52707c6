#include "app/CheckText.h"

#include "app/FindingText.h"
#include "app/HashListWriting.h"
#include "app/Translations.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace tallyfold {

using namespace check;
using namespace Qt::StringLiterals;
using Kind = Verdict::Kind;

namespace {

const std::vector<std::filesystem::path> folders{"/cases/Production 3", "/cases/Production 4"};

Finding of(Finding::What what, const QString &file = u"a.pdf"_s,
           std::optional<std::int64_t> page = std::nullopt, std::size_t folder = 0)
{
    return {folder, file, page, std::move(what)};
}

class CheckText : public testing::Test {
protected:
    CheckText()
    {
        QLocale::setDefault(QLocale(QStringLiteral("en_US")));
        outcome.copies = 2017;
        outcome.pages = 40212;
        outcome.numbers = {{u"ABC000001"_s, u"ABC040212"_s, 40212}};
    }
    ~CheckText() override
    {
        QLocale::setDefault(m_usual);
    }

    [[nodiscard]] std::string verdict() const
    {
        return Verdict::of(outcome).text.toStdString();
    }
    static std::string text(Finding::What what)
    {
        return findingText(of(std::move(what)), folders).toStdString();
    }

    const QLocale m_usual;
    Translations translations;
    Outcome outcome;
};

} // namespace

TEST_F(CheckText, AWholeProductionIsTold)
{
    EXPECT_EQ(verdict(), "Everything is there: 2,017 copies, 40,212 pages, ABC000001 – ABC040212, no gap, no "
                         "number twice.");
    EXPECT_EQ(Verdict::of(outcome).kind, Kind::whole);
    EXPECT_EQ(Verdict::of(outcome).indexed, QString());
    outcome.findings = {of(CoversWithoutNumber{2017}, {})};
    EXPECT_EQ(Verdict::of(outcome).kind, Kind::whole);
}

TEST_F(CheckText, WhatCouldNotBeCheckedIsNeverCalledWhole)
{
    outcome.findings = {of(PageNotChecked{}, u"a.pdf"_s, 1), of(PageNotChecked{}, u"a.pdf"_s, 2)};
    EXPECT_EQ(Verdict::of(outcome).kind, Kind::wholeAsChecked);
    EXPECT_EQ(verdict(), "Whole as far as it was checked: 2 pages could not be checked.");
    outcome.findings = {of(NumbersTooShort{})};
    EXPECT_EQ(verdict(), "Whole as far as it was checked: 1 copy could not be checked.");
    outcome.findings.push_back(of(PageNotChecked{}, u"b.pdf"_s, 7));
    EXPECT_EQ(verdict(), "Whole as far as it was checked: 1 page and 1 copy could not be checked.");
    EXPECT_EQ(Verdict::of(outcome).indexed,
              u"The index names 2,017 copies, 40,212 pages, ABC000001 – ABC040212."_s);
}

TEST_F(CheckText, FaultsAreCountedByCopies)
{
    outcome.findings = {of(CopyMissing{})};
    EXPECT_EQ(verdict(), "Not whole: 1 finding in 1 copy.");
    outcome.findings = {of(NumberMissing{u"1"_s}, u"a.pdf"_s, 1), of(NumberMissing{u"2"_s}, u"a.pdf"_s, 2),
                        of(CopyMissing{}, u"b.pdf"_s), of(CoversWithoutNumber{2}, {})};
    EXPECT_EQ(verdict(), "Not whole: 3 findings in 2 copies.");
    EXPECT_EQ(Verdict::of(outcome).kind, Kind::notWhole);
    outcome.findings.push_back(of(CopyMissing{}, u"b.pdf"_s, {}, 1));
    EXPECT_EQ(verdict(), "Not whole: 4 findings in 3 copies."); // Of the same name, in another folder.
    outcome.findings.push_back(of(PageNotChecked{}, u"c.pdf"_s, 1));
    EXPECT_EQ(verdict(), "Not whole: 4 findings in 3 copies. 1 page could not be checked.");
    outcome.findings.push_back(of(NotInIndex{}, u"x.pdf"_s));
    EXPECT_EQ(verdict(), "Not whole: 5 findings. 1 page could not be checked."); // That is no copy.
}

TEST_F(CheckText, AStoppedCheckSaysThatItIsNotComplete)
{
    outcome.isStopped = true;
    EXPECT_EQ(verdict(), "Stopped: not everything was checked. Nothing wrong was found until then.");
    EXPECT_EQ(Verdict::of(outcome).kind, Kind::stopped);
    outcome.findings = {of(CopyMissing{})};
    EXPECT_EQ(verdict(), "Stopped: not everything was checked. 1 finding in 1 copy until then.");
    EXPECT_EQ(Verdict::of(outcome).kind, Kind::stopped);
}

TEST_F(CheckText, AnIndexOfNothingIsNotCalledWhole)
{
    outcome = {};
    EXPECT_EQ(Verdict::of(outcome).kind, Kind::nothing);
    EXPECT_EQ(verdict(), "The index names no copy: there was nothing to check.");
    outcome.findings = {of(IndexMissing{}, u"Production Index.csv"_s)};
    EXPECT_EQ(Verdict::of(outcome).kind, Kind::notWhole);
    EXPECT_EQ(verdict(), "Not whole: 1 finding.");
}

TEST_F(CheckText, SeveralSeriesAreToldTheFirstOfThem)
{
    outcome.numbers = {{u"A1"_s, u"A1"_s, 1}, {u"B1"_s, u"B2"_s, 2}};
    EXPECT_EQ(numbersText(outcome.numbers), u"A1, B1 – B2"_s);
    outcome.numbers = {{u"A1"_s, u"A2"_s, 2},
                       {u"B1"_s, u"B2"_s, 2},
                       {u"C1"_s, u"C2"_s, 2},
                       {u"D1"_s, u"D2"_s, 2},
                       {u"E1"_s, u"E2"_s, 2}};
    EXPECT_EQ(numbersText(outcome.numbers), u"A1 – A2, B1 – B2, C1 – C2, D1 – D2 and 1 more"_s);
    outcome.numbers.push_back({u"F1"_s, u"F2"_s, 2});
    EXPECT_EQ(numbersText(outcome.numbers), u"A1 – A2, B1 – B2, C1 – C2, D1 – D2 and 2 more"_s);
}

TEST_F(CheckText, EachFindingIsASentence)
{
    const std::error_code denied(EACCES, std::generic_category());
    EXPECT_EQ(text(CopyMissing{}), "The index names it, and it isn’t in the folder.");
    EXPECT_EQ(text(CopyUnreadable{}), "It can’t be read as a PDF.");
    EXPECT_EQ(text(PageCountDiffers{1200, 1}), "It has 1 page; the index says 1,200 pages.");
    EXPECT_EQ(text(NumberMissing{u"ABC000007"_s}), "ABC000007 isn’t on the page.");
    EXPECT_EQ(text(OtherNumber{u"ABC000007"_s, u"ABC000008"_s}),
              "The page shows ABC000008 in the place of ABC000007.");
    EXPECT_EQ(text(PageNotChecked{}), "The page couldn’t be read, or not in time.");
    EXPECT_EQ(text(NumbersTooShort{}),
              "Its numbers are so short that any page has them; they weren’t looked for.");
    EXPECT_EQ(text(NumberGap{u"A7"_s, u"A7"_s}), "Before this copy, A7 is missing.");
    EXPECT_EQ(text(NumberGap{u"A7"_s, u"A9"_s}), "Before this copy, A7 – A9 are missing.");
    EXPECT_EQ(text(NumberTwice{u"A7"_s, u"A9"_s, 0, u"b %1.pdf"_s}), "“b %1.pdf” has A7 – A9 as well.");
    EXPECT_EQ(text(NumberTwice{u"A7"_s, u"A7"_s, 1, u"b.pdf"_s}),
              "“b.pdf” in “Production 4” has A7 as well.");
    EXPECT_EQ(text(NotInIndex{}), "The index doesn’t name this file.");
    EXPECT_EQ(text(Leftover{}), "A production that was cut short left this file behind.");
    EXPECT_EQ(text(FolderUnreadable{denied}), "The folder can’t be read: " + denied.message() + ".");
    EXPECT_EQ(text(IndexMissing{}), "There is no index in the folder, so nothing says what belongs in it.");
    EXPECT_EQ(text(IndexUnreadable{denied}), "The index can’t be read: " + denied.message() + ".");
    EXPECT_EQ(text(RowNotUnderstood{1}),
              "It doesn’t begin as a production index does; none of its rows was looked at.");
    EXPECT_EQ(text(RowNotUnderstood{1234}), "Row 1,234 isn’t understood; what it names wasn’t looked at.");
    EXPECT_EQ(text(CoversWithoutNumber{12}),
              "Page 1 shows no number in any copy (12 copies): taken for covers.");
    EXPECT_EQ(text(Changed{}), "It isn’t the file that the hash list tells of.");
    EXPECT_EQ(text(NotInHashList{}), "The hash list doesn’t name it.");
    EXPECT_EQ(text(HashListNotUnderstood{0}), "The hash list can’t be read.");
    EXPECT_EQ(text(HashListNotUnderstood{3}), "Line 3 of the hash list isn’t understood.");
}

TEST_F(CheckText, FindingsOfOneKindHaveOneTitle)
{
    const Finding one = of(NumberMissing{u"A1"_s}, u"a.pdf"_s, 1);
    const Finding same = of(NumberMissing{u"A2"_s}, u"b.pdf"_s, 2);
    const Finding other = of(OtherNumber{u"A1"_s, u"A2"_s}, u"a.pdf"_s, 1);
    EXPECT_EQ(kindOf(one), kindOf(same));
    EXPECT_NE(kindOf(one), kindOf(other));
    EXPECT_EQ(kindTitle(one), u"Pages without their number"_s);
    EXPECT_EQ(kindTitle(other), u"Pages with another number"_s);
}

TEST_F(CheckText, PagesAreShownOfWhatCanBeLookedAt)
{
    EXPECT_TRUE(hasPage(of(NumberMissing{u"A1"_s}, u"a.pdf"_s, 1)));
    EXPECT_TRUE(hasPage(of(PageCountDiffers{1, 2}, u"A.PDF"_s)));
    EXPECT_TRUE(hasPage(of(NotInIndex{}, u"x.pdf"_s)));
    EXPECT_FALSE(hasPage(of(CopyMissing{})));
    EXPECT_FALSE(hasPage(of(CopyUnreadable{})));
    EXPECT_FALSE(hasPage(of(RowNotUnderstood{4}, u"Production Index.csv"_s)));
    EXPECT_FALSE(hasPage(of(CoversWithoutNumber{4}, {})));
}

TEST_F(CheckText, ProgressSaysWhatIsReadAndHowFarItIs)
{
    EXPECT_EQ(readingText({}), u"Reading the index…"_s);
    EXPECT_EQ(pagesText({}), QString());
    EXPECT_EQ(readingText({u"a %1.pdf"_s, 0, 3}), u"Reading “a %1.pdf”"_s);
    EXPECT_EQ(pagesText({u"a.pdf"_s, 1200, 40'212}), u"1,200 of 40,212 pages"_s);
}

TEST_F(CheckText, AHashListThatWasNotWrittenSaysWhy)
{
    const auto text = [](std::errc error) {
        return failureText(check::HashesNotWritten{u"a.pdf"_s, std::make_error_code(error)}).toStdString();
    };
    EXPECT_EQ(text(std::errc::operation_canceled), "Stopped: no hash list was written.");
    EXPECT_EQ(text(std::errc::file_exists),
              "There is a hash list in the folder already, which was left as it is.");
    EXPECT_EQ(text(std::errc::no_space_on_device), "“a.pdf”: No space left on device.");
    EXPECT_EQ(writtenText(check::HashesWritten{1, {}, {}}), u"Wrote the hashes of 1 file."_s);
}

} // namespace tallyfold
