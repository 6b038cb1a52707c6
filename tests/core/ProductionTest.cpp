#include "core/Production.h"

#include "core/SourceClassifier.h"
#include "tests/support/Sample.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tallyfold {

namespace fs = std::filesystem;
using tests::soundPages;
using tests::TemporaryFolder;
using tests::textOfPage;
using tests::writeFile;
using tests::writeSample;

namespace {

using Kind = ProductionConflict::Kind;
using Conflicts = std::vector<ProductionConflict>;

const Production::OnPage goOn = [](std::int64_t) { return true; };

/// Three sources of two pages each, and an empty folder for their copies.
struct ThreeFiles {
    TemporaryFolder folder;
    fs::path out = folder / "out";

    ThreeFiles()
    {
        fs::create_directories(folder / "in");
        fs::create_directories(out);
        for (const char *name : {"a.pdf", "b.pdf", "c.pdf"}) {
            writeSample(folder / "in" / name, 2);
        }
    }

    [[nodiscard]] ProductionPlan plan(const StampSettings &settings = {}) const
    {
        std::vector<SourceFile> sources;
        for (const char *name : {"a.pdf", "b.pdf", "c.pdf"}) {
            sources.push_back(classify(folder / "in" / name));
        }
        return {sources, settings};
    }

    /// The names in the output folder.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const fs::directory_entry &entry : fs::directory_iterator(out)) {
            found.push_back(entry.path().filename());
        }
        std::sort(found.begin(), found.end());
        return found;
    }
};

/// Changes the working directory to `folder` during its lifetime.
class WorkingFolder {
public:
    explicit WorkingFolder(const fs::path &folder)
    {
        fs::current_path(folder);
    }
    ~WorkingFolder()
    {
        std::error_code error; // It may have been deleted; later tests do not need it.
        fs::current_path(m_before, error);
    }
    WorkingFolder(const WorkingFolder &) = delete;
    WorkingFolder &operator=(const WorkingFolder &) = delete;

private:
    fs::path m_before = fs::current_path();
};

using Names = std::vector<std::string>;

ProductionError errorOf(const ProductionPlan &plan, const fs::path &folder, const Production::OnPage &onPage)
{
    try {
        (void)Production::write(plan, folder, {}, onPage);
    } catch (const ProductionError &error) {
        return error;
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

} // namespace

TEST(Production, WritesEveryCopyAndTheTables)
{
    const ThreeFiles files;
    const ProductionResult result = Production::write(files.plan(), files.out, {true, true}, goOn);
    EXPECT_EQ(result.written,
              (std::vector<fs::path>{files.out / "a.pdf", files.out / "b.pdf", files.out / "c.pdf"}));
    EXPECT_EQ(result.pages, 6);
    EXPECT_EQ(result.index, files.out / "Production Index.csv");
    EXPECT_EQ(result.privilegeLog, files.out / "Privilege Log.csv");
    EXPECT_TRUE(result.failures.isEmpty());
    EXPECT_EQ(files.names(), (Names{"Privilege Log.csv", "Production Index.csv", "a.pdf", "b.pdf", "c.pdf"}));
    EXPECT_EQ(soundPages(files.out / "c.pdf"), 2);
    EXPECT_NE(textOfPage(files.out / "c.pdf", 2).find("ABC000006"), std::string::npos);
    EXPECT_TRUE(tests::readFile(files.out / "Production Index.csv").starts_with("File,Stamped Copy"));
}

TEST(Production, ProgressCountsEveryPageOfTheWholeProduction)
{
    const ThreeFiles files;
    std::vector<std::int64_t> counts;
    (void)Production::write(files.plan(), files.out, {}, [&counts](std::int64_t count) {
        counts.push_back(count);
        return true;
    });
    EXPECT_EQ(counts, (std::vector<std::int64_t>{1, 2, 3, 4, 5, 6}));
}

TEST(Production, NothingToStampAndNoFolderAreBothToldAndNothingElse)
{
    EXPECT_EQ(Production::findConflicts(ProductionPlan({}, {}), "/nowhere/at/all", {}),
              (Conflicts{{Kind::nothingToStamp, {}}, {Kind::folderMissing, {}}}));
}

TEST(Production, OfAMissingFolderNothingElseIsTold)
{
    const TemporaryFolder folder;
    for (const char *name : {"one", "two"}) {
        fs::create_directory(folder / name);
        writeSample(folder / name / "a.pdf", 1);
    }
    const ProductionPlan plan({classify(folder / "one/a.pdf"), classify(folder / "two/a.pdf")}, {});
    ASSERT_FALSE(plan.duplicateOutputNames().isEmpty());
    EXPECT_EQ(Production::findConflicts(plan, folder / "missing", {}),
              (Conflicts{{Kind::folderMissing, {}}}));
}

TEST(Production, ASourceThatIsALinkIsTheFileThatItLeadsTo)
{
    const TemporaryFolder folder;
    fs::create_directories(folder / "out");
    fs::create_directories(folder / "in");
    writeSample(folder / "out/a.pdf", 1);
    fs::create_symlink(folder / "out/a.pdf", folder / "in/a.pdf");
    EXPECT_EQ(
        Production::findConflicts(ProductionPlan({classify(folder / "in/a.pdf")}, {}), folder / "out", {}),
        (Conflicts{{Kind::wouldReplaceOriginal, QStringLiteral("a.pdf")}}));
}

TEST(Production, AFileIsNoFolder)
{
    const ThreeFiles files;
    EXPECT_EQ(Production::findConflicts(files.plan(), files.folder / "in/a.pdf", {}),
              (Conflicts{{Kind::folderMissing, {}}}));
}

TEST(Production, ConflictsComeInTheirOrder)
{
    const ThreeFiles files;
    fs::create_directories(files.folder / "in2");
    writeSample(files.folder / "in2/A.PDF", 1);
    std::vector<SourceFile> sources{classify(files.folder / "in/a.pdf"), classify(files.folder / "in2/A.PDF"),
                                    classify(files.folder / "in/b.pdf")};
    writeFile(files.out / "b.pdf", "x");
    writeFile(files.out / "Production Index.csv", "x");
    writeFile(files.out / "Privilege Log.csv", "x");
    StampSettings settings;
    settings.order = FileOrder::manual;
    const ProductionPlan plan(sources, settings);
    EXPECT_EQ(Production::findConflicts(plan, files.out, {true, true}),
              (Conflicts{{Kind::duplicate, QStringLiteral("a.pdf")},
                         {Kind::exists, QStringLiteral("b.pdf")},
                         {Kind::exists, QStringLiteral("Production Index.csv")},
                         {Kind::exists, QStringLiteral("Privilege Log.csv")}}));
    EXPECT_EQ(Production::findConflicts(plan, files.out, {false, false}).size(), 2U)
        << "tables that are not written are in nobody's way";
    EXPECT_EQ(std::get<ProductionError::Conflicts>(errorOf(plan, files.out, goOn).value).conflicts,
              Production::findConflicts(plan, files.out, {}));
    EXPECT_EQ(tests::readFile(files.out / "b.pdf"), "x");
}

TEST(Production, ACopyMayNotLandOnASourceWhateverItsLetterCase)
{
    const ThreeFiles files;
    std::vector<SourceFile> sources{classify(files.folder / "in/a.pdf")};
    sources[0].name = QStringLiteral("A.PDF");
    EXPECT_EQ(Production::findConflicts(ProductionPlan(sources, {}), files.folder / "in", {}),
              (Conflicts{{Kind::wouldReplaceOriginal, QStringLiteral("A.PDF")}}));
}

TEST(Production, ACopyMayNotLandOnASourceWhateverTheLetterCaseOfItsFolders)
{
    const TemporaryFolder folder;
    // One of them is the same folder on a case-insensitive file system.
    fs::create_directories(folder / "CaSe" / "In");
    fs::create_directories(folder / "case" / "in");
    writeSample(folder / "CaSe" / "In" / "a.pdf", 1);
    const ProductionPlan plan({classify(folder / "CaSe" / "In" / "a.pdf")}, {});
    EXPECT_EQ(Production::findConflicts(plan, folder / "case" / "in", {}),
              (Conflicts{{Kind::wouldReplaceOriginal, QStringLiteral("a.pdf")}}));
    EXPECT_TRUE(Production::findConflicts(plan, folder / "case", {}).empty());
}

TEST(Production, ACopyMayNotLandOnASourceThatIsSkipped)
{
    const ThreeFiles files;
    writeSample(files.out / "cover.pdf", 1);
    writeFile(files.out / "broken.pdf", "no PDF");
    writeFile(files.out / "empty.pdf", tests::smallPdf({}));
    tests::encrypt(files.folder / "in/a.pdf", files.out / "locked.pdf", "secret owner 256");
    tests::encrypt(files.folder / "in/a.pdf", files.out / "restricted.pdf", "'' owner 256 --print=none");
    StampSettings settings;
    settings.cover = CoverOption::skipNoNumber;
    for (const char *name : {"cover.pdf", "broken.pdf", "empty.pdf", "locked.pdf", "restricted.pdf"}) {
        // The copy of another source has its name.
        SourceFile other = classify(files.folder / "in/a.pdf");
        other.name = QString::fromLatin1(name).toUpper();
        const ProductionPlan plan({other, classify(files.out / name)}, settings);
        ASSERT_EQ(plan.stampedFiles().size(), 1U) << name;
        EXPECT_EQ(Production::findConflicts(plan, files.out, {}),
                  (Conflicts{{Kind::wouldReplaceOriginal, other.name}}))
            << name;
    }
}

TEST(Production, WithNothingToStampTheTablesAreStillInTheWay)
{
    const ThreeFiles files;
    writeFile(files.out / "Production Index.csv", "x");
    writeFile(files.out / "Privilege Log.csv", "x");
    EXPECT_EQ(Production::findConflicts(ProductionPlan({}, {}), files.out, {true, true}),
              (Conflicts{{Kind::nothingToStamp, {}},
                         {Kind::exists, QStringLiteral("Production Index.csv")},
                         {Kind::exists, QStringLiteral("Privilege Log.csv")}}));
}

TEST(Production, ASourceIsFoundThroughLinks)
{
    const ThreeFiles files;
    fs::create_directory_symlink(files.folder / "in", files.folder / "link");
    EXPECT_EQ(Production::findConflicts(files.plan(), files.folder / "link", {}),
              (Conflicts{{Kind::wouldReplaceOriginal, QStringLiteral("a.pdf")},
                         {Kind::wouldReplaceOriginal, QStringLiteral("b.pdf")},
                         {Kind::wouldReplaceOriginal, QStringLiteral("c.pdf")}}));
}

TEST(Production, ASourceIsFoundHoweverItsPathIsGiven)
{
    const ThreeFiles files;
    fs::create_directory(files.folder / "in/inner");
    const WorkingFolder working(files.folder / "in");
    for (const char *given : {"a.pdf", "./a.pdf", "../in/a.pdf", "inner/../a.pdf", "inner/.././a.pdf"}) {
        const SourceFile source = classify(given);
        ASSERT_EQ(source.problem, std::nullopt) << given;
        for (const fs::path &folder : {files.folder / "in", fs::path("."), fs::path("../in"),
                                       fs::path("inner/.."), fs::path("../in/")}) {
            EXPECT_EQ(Production::findConflicts(ProductionPlan({source}, {}), folder, {}),
                      (Conflicts{{Kind::wouldReplaceOriginal, QStringLiteral("a.pdf")}}))
                << given << " into " << folder;
        }
    }
}

TEST(Production, ALinkThatLeadsNowhereIsInTheWay)
{
    const ThreeFiles files;
    fs::create_symlink("nowhere", files.out / "b.pdf");
    EXPECT_EQ(Production::findConflicts(files.plan(), files.out, {}),
              (Conflicts{{Kind::exists, QStringLiteral("b.pdf")}}));
}

TEST(Production, StoppingKeepsTheFinishedCopiesAndNothingElse)
{
    for (std::int64_t last = 1; last <= 6; ++last) {
        const ThreeFiles files;
        const ProductionError error =
            errorOf(files.plan(), files.out, [last](std::int64_t pages) { return pages < last; });
        const std::size_t finished = static_cast<std::size_t>(last - 1) / 2;
        EXPECT_EQ(std::get<ProductionError::Cancelled>(error.value).written.size(), finished) << last;
        const Names all{"a.pdf", "b.pdf", "c.pdf"};
        EXPECT_EQ(files.names(), Names(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(finished)))
            << last;
    }
}

TEST(Production, ASourceThatVanishedFailsAloneAndByName)
{
    const ThreeFiles files;
    const ProductionPlan plan = files.plan();
    fs::remove(files.folder / "in/b.pdf");
    const ProductionResult result = Production::write(plan, files.out, {true, true}, goOn);
    EXPECT_EQ(result.failures,
              (QMap<QString, StampError>{
                  {QStringLiteral("b.pdf"), StampError::unreadable(QStringLiteral("b.pdf"))}}));
    EXPECT_EQ(files.names(), (Names{"Privilege Log.csv", "Production Index.csv", "a.pdf", "c.pdf"}));
    EXPECT_NE(tests::readFile(files.out / "Production Index.csv").find("b.pdf,,,,2,failed\r\n"),
              std::string::npos);
    EXPECT_NE(textOfPage(files.out / "c.pdf", 1).find("ABC000005"), std::string::npos)
        << "the numbers of the others are as planned";
}

TEST(Production, SourcesOfOneNameFailTogetherInTheTablesAndAloneInTheFolder)
{
    const ThreeFiles files;
    fs::create_directory(files.folder / "in2");
    writeSample(files.folder / "in2/a.pdf", 3);
    StampSettings settings;
    settings.naming = OutputNaming::batesFirst;
    const ProductionPlan plan({classify(files.folder / "in/a.pdf"), classify(files.folder / "in2/a.pdf"),
                               classify(files.folder / "in/b.pdf")},
                              settings);
    fs::remove(files.folder / "in/a.pdf");
    const ProductionResult result = Production::write(plan, files.out, {true, true}, goOn);
    EXPECT_EQ(result.written,
              (std::vector<fs::path>{files.out / "ABC000003.pdf", files.out / "ABC000006.pdf"}));
    EXPECT_TRUE(tests::readFile(*result.index)
                    .ends_with("a.pdf,,,,2,failed\r\na.pdf,,,,3,failed\r\n"
                               "b.pdf,ABC000006.pdf,ABC000006,ABC000007,2,stamped\r\n"));
    EXPECT_EQ(tests::readFile(*result.privilegeLog).find("ABC000003"), std::string::npos);
}

TEST(Production, ASourceWithFewerPagesThanPlannedFailsAloneAndByName)
{
    const ThreeFiles files;
    const ProductionPlan plan = files.plan();
    writeSample(files.folder / "in/b.pdf", 1);
    const ProductionResult result = Production::write(plan, files.out, {}, goOn);
    EXPECT_EQ(result.failures,
              (QMap<QString, StampError>{
                  {QStringLiteral("b.pdf"), StampError::cannotWrite(QStringLiteral("b.pdf"))}}));
    EXPECT_EQ(files.names(), (Names{"Production Index.csv", "a.pdf", "c.pdf"}));
}

TEST(Production, AFileThatTurnsUpMeanwhileIsNotReplaced)
{
    const ThreeFiles files;
    const ProductionResult result =
        Production::write(files.plan(), files.out, {}, [&files](std::int64_t pages) {
            if (pages == 3) {
                writeFile(files.out / "b.pdf", "mine");
            }
            return true;
        });
    EXPECT_EQ(result.failures.value(QStringLiteral("b.pdf")),
              StampError::cannotWrite(QStringLiteral("b.pdf")));
    EXPECT_EQ(tests::readFile(files.out / "b.pdf"), "mine");
    EXPECT_EQ(files.names(), (Names{"Production Index.csv", "a.pdf", "b.pdf", "c.pdf"}));
}

TEST(Production, AnIndexThatTurnsUpMeanwhileIsNotReplacedAndTheCopiesStay)
{
    const ThreeFiles files;
    EXPECT_THROW((void)Production::write(files.plan(), files.out, {},
                                         [&files](std::int64_t pages) {
                                             if (pages == 1) {
                                                 writeFile(files.out / "Production Index.csv", "mine");
                                             }
                                             return true;
                                         }),
                 FileError);
    EXPECT_EQ(tests::readFile(files.out / "Production Index.csv"), "mine");
    EXPECT_EQ(files.names().size(), 4U);
}

TEST(Production, AFolderThatIsReplacedMeanwhileStillGetsItsCopies)
{
    const ThreeFiles files;
    (void)Production::write(files.plan(), files.out, {}, [&files](std::int64_t pages) {
        if (pages == 1) {
            fs::rename(files.out, files.folder / "moved");
            fs::create_directory(files.out); // Another folder, which stays empty.
        }
        return true;
    });
    EXPECT_TRUE(fs::is_empty(files.out));
    EXPECT_TRUE(fs::exists(files.folder / "moved/c.pdf"));
    EXPECT_TRUE(fs::exists(files.folder / "moved/Production Index.csv"));
}

TEST(Production, ANameTooLongForTheFolderFailsAlone)
{
    const ThreeFiles files;
    std::vector<SourceFile> sources{classify(files.folder / "in/a.pdf"), classify(files.folder / "in/b.pdf")};
    sources[0].name = QString(300, u'a') + QStringLiteral(".pdf");
    const ProductionResult result = Production::write(ProductionPlan(sources, {}), files.out, {}, goOn);
    EXPECT_TRUE(result.failures.value(sources[0].name).is<StampError::CannotWrite>());
    EXPECT_EQ(files.names(), (Names{"Production Index.csv", "b.pdf"}));
}

TEST(Production, CopiesAreReadableByOthersAsTheUmaskSays)
{
    const ThreeFiles files;
    const mode_t before = ::umask(027);
    (void)Production::write(files.plan(), files.out, {}, goOn);
    ::umask(before);
    for (const std::string &name : files.names()) {
        struct stat status {};
        ASSERT_EQ(::stat((files.out / name).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0640U) << name;
    }
}

TEST(Production, AnUncountedCoverAloneIsNothingToStamp)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 1);
    StampSettings settings;
    settings.cover = CoverOption::skipNoNumber;
    EXPECT_EQ(
        Production::findConflicts(ProductionPlan({classify(folder / "a.pdf")}, settings), folder.path(), {}),
        (Conflicts{{Kind::nothingToStamp, {}}}));
}

TEST(Production, ASourceWhoseNameIsNotTextIsStampedAndListed)
{
    const ThreeFiles files;
    const fs::path path = files.folder / std::filesystem::path("in/caf\xE9.pdf");
    writeSample(path, 1);
    const ProductionResult result =
        Production::write(ProductionPlan({classify(path)}, {}), files.out, {}, goOn);
    EXPECT_EQ(result.written, (std::vector<fs::path>{files.out / "caf\xEF\xBF\xBD.pdf"}));
    EXPECT_NE(tests::readFile(files.out / "Production Index.csv").find("caf\xEF\xBF\xBD.pdf"),
              std::string::npos);
}

} // namespace tallyfold
