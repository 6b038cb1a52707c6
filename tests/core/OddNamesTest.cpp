#include "core/CSV.h"
#include "core/Production.h"
#include "core/SourceClassifier.h"
#include "core/SourceCollector.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace tallyfold {

namespace fs = std::filesystem;
using tests::TemporaryFolder;

namespace {

/// The name of a source, its displayed form, and the name of its copy.
struct OddName {
    std::string bytes;
    std::string shown;
    std::string copy;
};

std::vector<OddName> oddNames()
{
    const auto itself = [](const std::string &name) { return OddName{name, name, name}; };
    std::string longest(255, 'n');
    longest.replace(251, 4, ".pdf");
    std::string longestLetters; // Of two bytes each.
    for (int letter = 0; letter < 125; ++letter) {
        longestLetters += "\xC3\xA9";
    }
    return {{"caf\xE9.pdf", "caf\xEF\xBF\xBD.pdf", "caf\xEF\xBF\xBD.pdf"},
            {"cut \xC3.pdf", "cut \xEF\xBF\xBD.pdf", "cut \xEF\xBF\xBD.pdf"},
            {"line\nbreak.pdf", "line\nbreak.pdf", "line break.pdf"},
            {"return\r\nfeed.pdf", "return\r\nfeed.pdf", "return  feed.pdf"},
            {"tab\there.pdf", "tab\there.pdf", "tab here.pdf"},
            {"bell\x07 escape\x1B[1m delete\x7F.pdf", "bell\x07 escape\x1B[1m delete\x7F.pdf",
             "bell  escape [1m delete .pdf"},
            {"\x01 start and end.pdf\xC2\x9F.pdf", "\x01 start and end.pdf\xC2\x9F.pdf",
             "start and end.pdf .pdf"},
            itself("\"quoted\", with comma.pdf"),
            itself("it's \\ back.pdf"),
            itself("right \xE2\x80\x8F to \xE2\x80\xAE left.pdf"),
            itself("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D.pdf"),
            itself("=SUM(A1).pdf"),
            itself("-rf.pdf"),
            itself("%s%n$(x)`y`*?.pdf"),
            {"  leading.pdf", "  leading.pdf", "leading.pdf"},
            itself(longest),
            itself(longestLetters + "x.pdf")};
}

} // namespace

TEST(OddNames, AreFoundAndShownAndStampedAndIndexed)
{
    for (const OddName &name : oddNames()) {
        SCOPED_TRACE(name.shown);
        const TemporaryFolder folder;
        fs::create_directory(folder / "in");
        fs::create_directory(folder / "out");
        tests::writeSample(folder / "in" / name.bytes, 2);

        const CollectedPdfs found = collectPdfs(std::vector{folder / "in"});
        ASSERT_EQ(found.locations, (std::vector<fs::path>{folder / "in" / name.bytes}));
        const SourceFile source = classify(found.locations.front());
        EXPECT_EQ(source.problem, std::nullopt);
        EXPECT_EQ(source.pageCount, 2);
        EXPECT_EQ(source.name.toStdString(), name.shown);

        const ProductionResult result =
            Production::write(ProductionPlan({source}, {}), folder / "out", {true, true}, {});
        EXPECT_TRUE(result.failures.isEmpty());
        ASSERT_EQ(result.written, (std::vector<fs::path>{folder / "out" / name.copy}));
        fs::copy_file(folder / "out" / name.copy, folder / "copy.pdf");
        EXPECT_EQ(tests::soundPages(folder / "copy.pdf"), 2);
        EXPECT_NE(tests::textOfPage(folder / "copy.pdf", 2).find("ABC000002"), std::string::npos);
        const QString row = CSV::cell(QString::fromStdString(name.shown)) + u',' +
                            CSV::cell(QString::fromStdString(name.copy)) +
                            QStringLiteral(",ABC000001,ABC000002,2,stamped\r\n");
        EXPECT_TRUE(tests::readFile(*result.index).ends_with("Status\r\n" + row.toStdString()));
        EXPECT_NE(tests::readFile(*result.privilegeLog).find("ABC000002"), std::string::npos);
    }
}

TEST(OddNames, FoldersMayHaveThemToo)
{
    for (const std::string name : {"f\xFFlder", "line\nbreak", " =1+1 ", "\"\\'", "n.pdf"}) {
        const TemporaryFolder folder;
        const fs::path in = folder / "in" / name;
        const fs::path out = folder / ("out" + name);
        fs::create_directories(in);
        fs::create_directory(out);
        tests::writeSample(in / "a.pdf", 1);
        const CollectedPdfs found = collectPdfs(std::vector{folder / "in"});
        EXPECT_TRUE(found.unreadableFolders.empty());
        ASSERT_FALSE(found.locations.empty()) << name;
        ASSERT_EQ(found.locations.back(), in / "a.pdf");
        const ProductionResult result =
            Production::write(ProductionPlan({classify(found.locations.back())}, {}), out, {}, {});
        EXPECT_EQ(result.written, (std::vector<fs::path>{out / "a.pdf"}));
        EXPECT_EQ(result.index, out / "Production Index.csv");
        fs::copy_file(out / "a.pdf", folder / "copy.pdf");
        EXPECT_EQ(tests::soundPages(folder / "copy.pdf"), 1);
    }
}

TEST(OddNames, NamesThatAreShownAlikeAreTwoSourcesWhoseCopiesCollide)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "in");
    fs::create_directory(folder / "out");
    tests::writeSample(folder / "in" / "caf\xE9.pdf", 1);
    tests::writeSample(folder / "in" / "caf\xE8.pdf", 1);
    std::vector<SourceFile> sources;
    for (const fs::path &location : collectPdfs(std::vector{folder / "in"}).locations) {
        sources.push_back(classify(location));
    }
    ASSERT_EQ(sources.size(), 2U);
    EXPECT_EQ(Production::findConflicts(ProductionPlan(sources, {}), folder / "out", {}),
              (std::vector<ProductionConflict>{
                  {ProductionConflict::Kind::duplicate, QStringLiteral("caf\uFFFD.pdf")}}));
}

TEST(OddNames, ANameThatANumberMakesTooLongFailsAloneAndLeavesNothing)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "in");
    fs::create_directory(folder / "out");
    // With a number and a space as prefix, the first has the maximum length, and the second is a byte longer.
    const std::string longest = std::string(255 - 10 - 4, 'a') + ".pdf";
    const std::string tooLong = std::string(255 - 10 - 3, 'b') + ".pdf";
    const std::string asLongAsNamesMayBe = std::string(255 - 4, 'c') + ".pdf";
    std::vector<SourceFile> sources;
    for (const std::string &name : {longest, tooLong, asLongAsNamesMayBe, std::string("d.pdf")}) {
        tests::writeSample(folder / "in" / name, 1);
        sources.push_back(classify(folder / "in" / name));
    }
    StampSettings settings;
    settings.naming = OutputNaming::batesAndOriginal;
    const ProductionResult result =
        Production::write(ProductionPlan(sources, settings), folder / "out", {}, {});
    const auto failure = [](const std::string &name, const std::string &number) {
        return std::pair(QString::fromStdString(name),
                         StampError::cannotWrite(QString::fromStdString(number + ' ' + name)));
    };
    EXPECT_EQ(result.failures, (QMap<QString, StampError>{failure(tooLong, "ABC000002"),
                                                          failure(asLongAsNamesMayBe, "ABC000003")}));
    EXPECT_EQ(result.written, (std::vector<fs::path>{folder / "out" / ("ABC000001 " + longest),
                                                     folder / "out" / "ABC000004 d.pdf"}));
    const fs::directory_iterator left(folder / "out");
    EXPECT_EQ(std::distance(begin(left), end(left)), 3) << "two copies and the index";
    const std::string index = tests::readFile(*result.index);
    for (const std::string &name : {tooLong, asLongAsNamesMayBe}) {
        EXPECT_NE(index.find(name + ",,,,1,failed\r\n"), std::string::npos);
    }
}

} // namespace tallyfold
