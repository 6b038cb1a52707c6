#include "core/SourceCollector.h"

#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UnreadableFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tallyfold {

namespace fs = std::filesystem;
using tests::TemporaryFolder;

namespace {

void touch(const fs::path &path)
{
    fs::create_directories(path.parent_path());
    tests::writeFile(path, "x");
}

/// The collected locations relative to `folder`.
std::vector<std::string> collected(const TemporaryFolder &folder, const std::vector<fs::path> &items)
{
    std::vector<std::string> names;
    for (const fs::path &location : collectPdfs(items).locations) {
        names.push_back(location.lexically_relative(folder.path()).native());
    }
    return names;
}

using Names = std::vector<std::string>;

} // namespace

TEST(SourceCollector, FilesAreTakenByTheirNames)
{
    const TemporaryFolder folder;
    std::vector<fs::path> items;
    for (const char *name : {"Report.PDF", "._Report.pdf", ".hidden.pdf", "notes.pdf.txt", "b.pdf", "pdf"}) {
        touch(folder / name);
        items.push_back(folder / name);
    }
    items.push_back(folder / "missing.pdf");
    EXPECT_EQ(collected(folder, items), (Names{"Report.PDF", "b.pdf"}));
}

TEST(SourceCollector, AFoldersFilesComeInNaturalOrderOfTheirPaths)
{
    const TemporaryFolder folder;
    for (const char *name : {"in/b.pdf", "in/a/10.pdf", "in/a/2.pdf"}) {
        touch(folder / name);
    }
    EXPECT_EQ(collected(folder, {folder / "in"}), (Names{"in/a/2.pdf", "in/a/10.pdf", "in/b.pdf"}));
}

TEST(SourceCollector, AFolderStandsAtThePlaceWhereItWasGiven)
{
    const TemporaryFolder folder;
    for (const char *name : {"z.pdf", "in/m.pdf", "a.pdf"}) {
        touch(folder / name);
    }
    EXPECT_EQ(collected(folder, {folder / "z.pdf", folder / "in", folder / "a.pdf"}),
              (Names{"z.pdf", "in/m.pdf", "a.pdf"}));
}

TEST(SourceCollector, AFileMetTwiceIsListedOnce)
{
    const TemporaryFolder folder;
    touch(folder / "in/a.pdf");
    EXPECT_EQ(collected(folder, {folder / "in/a.pdf", folder / "in/a.pdf"}).size(), 1U);
    EXPECT_EQ(collected(folder, {folder / "in", folder / "in/a.pdf"}).size(), 1U);
    EXPECT_EQ(collectPdfs(std::vector{folder / "in/a.pdf", folder / "in/../in/./a.pdf"}).locations.size(),
              1U);
}

TEST(SourceCollector, ASymbolicLinkIsADocumentOfItsOwn)
{
    const TemporaryFolder folder;
    touch(folder / "a.pdf");
    fs::create_symlink("a.pdf", folder / "b.pdf");
    EXPECT_EQ(collected(folder, {folder / "a.pdf", folder / "b.pdf"}), (Names{"a.pdf", "b.pdf"}));
}

TEST(SourceCollector, LinkedFoldersDoNotLeadIntoLoops)
{
    const TemporaryFolder folder;
    touch(folder / "in/a.pdf");
    fs::create_directory_symlink(folder / "in", folder / "in/again");
    EXPECT_EQ(collected(folder, {folder / "in"}), (Names{"in/a.pdf"}));
}

TEST(SourceCollector, HiddenFilesAndFoldersAreLeftOut)
{
    const TemporaryFolder folder;
    for (const char *name : {"in/.hidden/a.pdf", "in/.b.pdf", "in/._c.pdf", "in/d.pdf"}) {
        touch(folder / name);
    }
    EXPECT_EQ(collected(folder, {folder / "in"}), (Names{"in/d.pdf"}));
}

TEST(SourceCollector, AFolderNamedLikeAFileIsListedAndSoAreItsContents)
{
    const TemporaryFolder folder;
    touch(folder / "in/x.pdf/inner.pdf");
    EXPECT_EQ(collected(folder, {folder / "in"}), (Names{"in/x.pdf", "in/x.pdf/inner.pdf"}));
}

TEST(SourceCollector, NamesThatAreNotTextAreFound)
{
    const TemporaryFolder folder;
    touch(folder / "in/caf\xE9.pdf");
    touch(folder / "in/line\nbreak.pdf");
    const Names names = collected(folder, {folder / "in"});
    EXPECT_EQ(names.size(), 2U);
    EXPECT_EQ(std::count(names.begin(), names.end(), "in/caf\xE9.pdf"), 1);
}

TEST(SourceCollector, NamesThatReadTheSameComeInTheOrderOfTheirBytes)
{
    const TemporaryFolder folder;
    Names expected;
    for (const char *byte : {"\xE0", "\xE1", "\xE2", "\xE3", "\xE4", "\xE5", "\xE6", "\xE7"}) {
        expected.push_back(std::string("in/") + byte + ".pdf");
    }
    fs::create_directory(folder / "in");
    const std::vector<fs::path> items{folder / "in"};
    for (const bool isReversed : {false, true}) { // Directory entries come in any order.
        const CollectedPdfs found =
            collectPdfs(items, [&](const fs::path &, std::vector<FolderEntry> &entries) {
                for (const std::string &name : expected) {
                    entries.push_back({folder / name, false});
                }
                if (isReversed) {
                    std::reverse(entries.begin(), entries.end());
                }
                return true;
            });
        Names names;
        for (const fs::path &location : found.locations) {
            names.push_back(location.lexically_relative(folder.path()).native());
        }
        EXPECT_EQ(names, expected);
    }
}

TEST(SourceCollector, AFolderThatCannotBeReadIsToldAndTheOthersAreSearched)
{
    const TemporaryFolder folder;
    for (const char *name : {"in/a.pdf", "in/bad/b.pdf", "in/bad/deeper/c.pdf", "in/good/d.pdf", "e.pdf"}) {
        touch(folder / name);
    }
    const std::vector<fs::path> items{folder / "in", folder / "e.pdf"};
    const CollectedPdfs found =
        collectPdfs(items, [&](const fs::path &path, std::vector<FolderEntry> &entries) {
            return path != folder / "in/bad" && listFolder(path, entries);
        });
    EXPECT_EQ(found.locations,
              (std::vector<fs::path>{folder / "in/a.pdf", folder / "in/good/d.pdf", folder / "e.pdf"}));
    EXPECT_EQ(found.unreadableFolders, (std::vector<fs::path>{folder / "in/bad"}));
}

TEST(SourceCollector, OfAFolderThatBreaksOffWhatWasReadIsTaken)
{
    const TemporaryFolder folder;
    for (const char *name : {"in/a.pdf", "in/b.pdf", "in/c.pdf", "in/inner/d.pdf"}) {
        touch(folder / name);
    }
    const std::vector<fs::path> items{folder / "in"};
    for (std::size_t most = 0; most <= 4; ++most) {
        std::vector<FolderEntry> top;
        ASSERT_TRUE(listFolder(folder / "in", top));
        top.resize(std::min(most, top.size()));
        const CollectedPdfs found =
            collectPdfs(items, [&](const fs::path &path, std::vector<FolderEntry> &entries) {
                if (path != folder / "in") {
                    return listFolder(path, entries);
                }
                entries.insert(entries.end(), top.begin(), top.end());
                return false;
            });
        EXPECT_EQ(found.locations.size(), most); // The folder among them has one as well.
        EXPECT_EQ(found.unreadableFolders, items);
    }
}

TEST(SourceCollector, AFolderBeyondTheLongestPathIsReportedAndTheOthersAreSearched)
{
    const TemporaryFolder folder;
    touch(folder / "in/a.pdf");
    touch(folder / "in/z/b.pdf");
    tests::makeUnreadableFolder(folder / "in/m");
    const CollectedPdfs found = collectPdfs(std::vector{folder / "in"});
    EXPECT_EQ(found.locations, (std::vector<fs::path>{folder / "in/a.pdf", folder / "in/z/b.pdf"}));
    ASSERT_EQ(found.unreadableFolders.size(), 1U);
    EXPECT_TRUE(found.unreadableFolders.front().native().starts_with((folder / "in/m/ddd").native()));
}

TEST(SourceCollector, AFolderThatVanishesDuringTheSearchIsReportedAndTheOthersAreSearched)
{
    const TemporaryFolder folder;
    touch(folder / "in/a/a.pdf");
    touch(folder / "in/b/b.pdf");
    const CollectedPdfs found =
        collectPdfs(std::vector{folder / "in"}, [&](const fs::path &path, std::vector<FolderEntry> &entries) {
            const bool isAll = listFolder(path, entries);
            fs::remove_all(folder / "in/a");
            return isAll;
        });
    EXPECT_EQ(found.locations, (std::vector<fs::path>{folder / "in/b/b.pdf"}));
    EXPECT_EQ(found.unreadableFolders, (std::vector<fs::path>{folder / "in/a"}));
}

TEST(SourceCollector, PathsAreStandardisedWithoutResolvingLinks)
{
    EXPECT_EQ(standardized("/a/b/../c/./d//e/"), "/a/c/d/e");
    EXPECT_EQ(standardized("/"), "/");
    EXPECT_EQ(standardized("x.pdf"), fs::current_path() / "x.pdf");
}

} // namespace tallyfold
