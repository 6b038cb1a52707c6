#include "core/check/ProductionCheck.h"

#include "core/Production.h"
#include "core/SourceClassifier.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tallyfold::check {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using tests::TemporaryFolder;

namespace {

using Findings = std::vector<Finding>;

/// A production of a.pdf, b.pdf and c.pdf, with 3, 1 and 5 pages.
class Productions : public testing::Test {
protected:
    Productions()
    {
        fs::create_directories(m_folder / "in");
        for (const auto &[name, pages] :
             {std::pair{"a.pdf", 3U}, std::pair{"b.pdf", 1U}, std::pair{"c.pdf", 5U}}) {
            tests::writeFile(m_folder / "in" / name, tests::smallPdf(std::vector<tests::SmallPage>(
                                                         pages, {tests::showText(300, 400, "Text")})));
        }
    }

    fs::path produce(const char *name, const StampSettings &settings = {})
    {
        std::vector<SourceFile> sources;
        for (const char *source : {"a.pdf", "b.pdf", "c.pdf"}) {
            sources.push_back(classify(m_folder / "in" / source));
        }
        const fs::path out = m_folder / name;
        fs::create_directories(out);
        const ProductionResult result =
            Production::write(ProductionPlan(sources, settings), out, {}, [](std::int64_t) { return true; });
        EXPECT_TRUE(result.failures.empty());
        return out;
    }

    Outcome check(const std::vector<fs::path> &folders)
    {
        return checkProductions(folders);
    }

    /// Runs qpdf on the copy called `name`, which it replaces.
    void rewrite(const fs::path &folder, const std::string &name, std::vector<std::string> arguments)
    {
        const fs::path copy = folder / name;
        fs::rename(copy, m_folder / "before.pdf");
        arguments.insert(arguments.begin(), {"qpdf", m_folder / "before.pdf"});
        arguments.push_back(copy);
        ASSERT_EQ(tests::runTool(arguments).exitCode, 0);
    }

    TemporaryFolder m_folder;
};

Finding of(const QString &file, std::optional<std::int64_t> page, Finding::What what, std::size_t folder = 0)
{
    return {folder, file, page, std::move(what)};
}

void replaceIn(const fs::path &file, const std::string &text, const std::string &by)
{
    std::string bytes = tests::readFile(file);
    const std::size_t at = bytes.find(text);
    ASSERT_NE(at, std::string::npos);
    tests::writeFile(file, bytes.replace(at, text.size(), by));
}

} // namespace

TEST_F(Productions, AreWhole)
{
    std::vector<Progress> shown;
    const std::vector folders{produce("out")};
    const Outcome outcome =
        checkProductions(folders, [&](const Progress &progress) { shown.push_back(progress); });
    EXPECT_EQ(outcome.findings, Findings());
    EXPECT_TRUE(outcome.isWhole());
    EXPECT_EQ(outcome.copies, 3);
    EXPECT_EQ(outcome.pages, 9);
    EXPECT_EQ(outcome.numbers, (std::vector{NumberSeries::Run{u"ABC000001"_s, u"ABC000009"_s, 9}}));
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.back().pages, 9);
    EXPECT_EQ(shown.back().plannedPages, 9);
}

TEST_F(Productions, AreWholeUnderAllSettings)
{
    int count = 0;
    for (const StampPosition position : allStampPositions) {
        for (const double margin : {0.0, 144.0}) {
            for (const double size : {4.0, 72.0}) {
                StampSettings settings;
                settings.batesPosition = position;
                settings.margin = margin;
                settings.fontSize = size;
                settings.prefix = u"A "_s;
                settings.suffix = u"-2"_s;
                settings.legend = u"CONFIDENTIAL"_s;
                settings.cover = CoverOption::skipNoNumber;
                const Outcome outcome = check({produce(("out" + std::to_string(count++)).c_str(), settings)});
                EXPECT_EQ(outcome.findings, Findings()) << int(position) << ' ' << margin << ' ' << size;
            }
        }
    }
}

TEST_F(Productions, TellOfEachCopyThatIsGoneOrBroken)
{
    const fs::path out = produce("out");
    fs::remove(out / "a.pdf");
    fs::resize_file(out / "b.pdf", 200);
    fs::rename(out / "c.pdf", out / "d.pdf");
    EXPECT_EQ(check({out}).findings,
              (Findings{of(u"d.pdf"_s, {}, NotInIndex{}), of(u"a.pdf"_s, {}, CopyMissing{}),
                        of(u"b.pdf"_s, {}, CopyUnreadable{}), of(u"c.pdf"_s, {}, CopyMissing{})}));
}

TEST_F(Productions, TellOfPagesThatAreGoneByTheirNumbers)
{
    const fs::path out = produce("out");
    rewrite(out, "c.pdf", {"--pages", ".", "1-2,4-5", "--"});
    EXPECT_EQ(check({out}).findings, (Findings{of(u"c.pdf"_s, {}, PageCountDiffers{5, 4}),
                                               of(u"c.pdf"_s, 3, NumberMissing{u"ABC000007"_s})}));
}

TEST_F(Productions, TellOfPagesThatAreThereTwiceByTheirCountAlone)
{
    const fs::path out = produce("out");
    rewrite(out, "a.pdf", {"--pages", ".", "1-3,3", "--"});
    EXPECT_EQ(check({out}).findings, (Findings{of(u"a.pdf"_s, {}, PageCountDiffers{3, 4})}));
}

TEST_F(Productions, TellOfPagesWithAnotherNumberOrNone)
{
    const fs::path out = produce("out");
    rewrite(out, "a.pdf", {"--pages", ".", "1,3,2", "--"});
    tests::writeFile(out / "b.pdf", tests::readFile(m_folder / "in" / "b.pdf"));
    EXPECT_EQ(check({out}).findings, (Findings{of(u"a.pdf"_s, 2, OtherNumber{u"ABC000002"_s, u"ABC000003"_s}),
                                               of(u"a.pdf"_s, 3, OtherNumber{u"ABC000003"_s, u"ABC000002"_s}),
                                               of(u"b.pdf"_s, 1, NumberMissing{u"ABC000004"_s})}));
}

TEST_F(Productions, AreReadAsOtherToolsSaveThem)
{
    const fs::path out = produce("out");
    rewrite(out, "a.pdf", {"--linearize", "--rotate=90:1", "--rotate=180:2"});
    rewrite(out, "c.pdf", {"--qdf", "--object-streams=disable"});
    EXPECT_EQ(check({out}).findings, Findings());
}

TEST_F(Productions, TellOfCoversOnce)
{
    StampSettings settings;
    settings.cover = CoverOption::skipKeepNumber;
    const fs::path out = produce("out", settings);
    const Outcome outcome = check({out});
    EXPECT_EQ(outcome.findings, (Findings{of({}, {}, CoversWithoutNumber{2})}));
    EXPECT_TRUE(outcome.isWhole());
}

TEST_F(Productions, WithoutAnyNumberAreNoCovers)
{
    const fs::path out = produce("out");
    for (const char *name : {"a.pdf", "b.pdf", "c.pdf"}) {
        tests::writeFile(out / name, tests::readFile(m_folder / "in" / name));
    }
    const Outcome outcome = check({out});
    EXPECT_EQ(outcome.findings.size(), 9);
    EXPECT_EQ(outcome.weight(), Weight::fault);
}

TEST_F(Productions, TellOfGapsAndOfNumbersThatAreThereTwiceAcrossFolders)
{
    StampSettings settings;
    const fs::path first = produce("first", settings);
    settings.startNumber = 10;
    const fs::path second = produce("second", settings);
    EXPECT_EQ(check({first, second}).findings, Findings());
    EXPECT_EQ(check({second, first}).findings, Findings());

    settings.startNumber = 21;
    const fs::path later = produce("later", settings);
    EXPECT_EQ(check({first, second, later}).findings,
              (Findings{of(u"a.pdf"_s, {}, NumberGap{u"ABC000019"_s, u"ABC000020"_s}, 2)}));

    settings.startNumber = 9;
    const fs::path again = produce("again", settings);
    EXPECT_EQ(check({first, again}).findings,
              (Findings{of(u"a.pdf"_s, {}, NumberTwice{u"ABC000009"_s, u"ABC000009"_s, 0, u"c.pdf"_s}, 1)}));
}

TEST_F(Productions, TellOfWhatDoesNotBelongInTheFolder)
{
    const fs::path out = produce("out");
    tests::writeFile(out / ".tallyfold-1.pdf", "");
    tests::writeFile(out / "more.PDF", "");
    tests::writeFile(out / "notes.txt", "");
    fs::create_directories(out / "folder.pdf");
    EXPECT_EQ(check({out}).findings,
              (Findings{of(u".tallyfold-1.pdf"_s, {}, Leftover{}), of(u"more.PDF"_s, {}, NotInIndex{})}));
}

TEST_F(Productions, TellOfAnIndexThatIsMissingOrNotUnderstood)
{
    const fs::path out = produce("out");
    const fs::path index = out / "Production Index.csv";
    replaceIn(index, "ABC000004,1", "ABC000004,2x");
    EXPECT_EQ(
        check({out}).findings,
        (Findings{of(u"Production Index.csv"_s, {}, RowNotUnderstood{3}), of(u"b.pdf"_s, {}, NotInIndex{}),
                  of(u"c.pdf"_s, {}, NumberGap{u"ABC000004"_s, u"ABC000004"_s})}));
    fs::remove(index);
    EXPECT_EQ(check({out}).findings,
              (Findings{of(u"Production Index.csv"_s, {}, IndexMissing{}), of(u"a.pdf"_s, {}, NotInIndex{}),
                        of(u"b.pdf"_s, {}, NotInIndex{}), of(u"c.pdf"_s, {}, NotInIndex{})}));
    EXPECT_FALSE(check({out}).isWhole());

    const Findings findings = check({m_folder / "nowhere"}).findings;
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(std::get<FolderUnreadable>(findings[0].what).error, std::errc::no_such_file_or_directory);
}

TEST_F(Productions, DoNotWaitForAPipeInThePlaceOfAnIndexOrACopy)
{
    const fs::path out = produce("out");
    for (const char *name : {"Production Index.csv", "a.pdf"}) {
        fs::rename(out / name, m_folder / name);
        ASSERT_EQ(tests::runTool({"mkfifo", out / name}).exitCode, 0);
    }
    EXPECT_TRUE(std::holds_alternative<IndexUnreadable>(check({out}).findings.at(0).what));
    fs::remove(out / "Production Index.csv");
    fs::rename(m_folder / "Production Index.csv", out / "Production Index.csv");
    EXPECT_EQ(check({out}).findings, (Findings{of(u"a.pdf"_s, {}, CopyUnreadable{})}));
}

TEST_F(Productions, WithNumbersOfThreeCharactersAreNotChecked)
{
    StampSettings settings;
    settings.prefix.clear();
    settings.digits = 1;
    const Outcome outcome = check({produce("out", settings)});
    EXPECT_EQ(outcome.findings.size(), 3);
    EXPECT_EQ(outcome.weight(), Weight::notChecked);
    EXPECT_FALSE(outcome.isWhole());
}

TEST_F(Productions, FindNamesInEitherForm)
{
    const fs::path out = produce("out");
    fs::rename(out / "a.pdf", out / "\u00e9.pdf");
    replaceIn(out / "Production Index.csv", "a.pdf,a.pdf", "a.pdf,e\u0301.pdf");
    EXPECT_EQ(check({out}).findings, Findings());
}

TEST_F(Productions, KeepWhatWasFoundBeforeAStop)
{
    const fs::path out = produce("out");
    fs::remove(out / "a.pdf");
    std::stop_source stop;
    const auto stopAtOnce = [&](const Progress &) { stop.request_stop(); };
    const Outcome outcome = checkProductions(std::vector{out}, stopAtOnce, stop.get_token());
    EXPECT_TRUE(outcome.isStopped);
    EXPECT_FALSE(outcome.isWhole());
    for (const Finding &finding : outcome.findings) {
        EXPECT_EQ(finding, of(u"a.pdf"_s, {}, CopyMissing{}));
    }
}

} // namespace tallyfold::check
