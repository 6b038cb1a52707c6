// Folders on file systems whose directory entries have no type (DT_UNKNOWN), so that stat is needed.
#include "core/SourceCollector.h"

#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UnreadableFolder.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <dlfcn.h>

namespace {

bool isKindTold = true;
/// Deleted right after it was listed.
std::filesystem::path vanishing;

} // namespace

/// Replaces the function of the C library for the whole program, including the C++ standard library.
extern "C" dirent *readdir(DIR *folder)
{
    using Function = dirent *(*)(DIR *);
    static const auto system = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "readdir"));
    dirent *entry = system(folder);
    if (entry != nullptr && !isKindTold) {
        entry->d_type = DT_UNKNOWN;
        if (vanishing.filename() == entry->d_name) {
            std::filesystem::remove(vanishing);
        }
    }
    return entry;
}

namespace tallyfold {

namespace fs = std::filesystem;

namespace {

class UnknownKinds : public testing::Test {
protected:
    UnknownKinds()
    {
        for (const char *name : {"in/a.pdf", "in/b.pdf/c.pdf", "in/d/e.pdf", "elsewhere/f.pdf"}) {
            fs::create_directories((folder / name).parent_path());
            tests::writeFile(folder / name, "");
        }
        fs::create_directory_symlink(folder / "elsewhere", folder / "in/linked.pdf");
        isKindTold = false;
    }
    ~UnknownKinds() override
    {
        isKindTold = true;
        vanishing.clear();
    }

    [[nodiscard]] CollectedPdfs collected() const
    {
        return collectPdfs(std::vector{folder / "in"});
    }

    const tests::TemporaryFolder folder;
};

} // namespace

TEST_F(UnknownKinds, FoldersAreEnteredAndLinksToThemAreNot)
{
    const CollectedPdfs found = collected();
    EXPECT_EQ(found.locations,
              (std::vector<fs::path>{folder / "in/a.pdf", folder / "in/b.pdf", folder / "in/b.pdf/c.pdf",
                                     folder / "in/d/e.pdf", folder / "in/linked.pdf"}));
    EXPECT_TRUE(found.unreadableFolders.empty());
    isKindTold = true;
    EXPECT_EQ(collected().locations, found.locations);
}

TEST_F(UnknownKinds, AFolderWithAnEntryThatCannotBeAskedIsTold)
{
    tests::makeUnreadableFolder(folder / "in/m");
    const CollectedPdfs found = collected();
    EXPECT_EQ(found.locations.size(), 5U);
    ASSERT_EQ(found.unreadableFolders.size(), 1U);
    EXPECT_TRUE(found.unreadableFolders.front().native().starts_with((folder / "in/m/ddd").native()));
    std::vector<FolderEntry> entries;
    EXPECT_FALSE(listFolder(found.unreadableFolders.front(), entries));
    EXPECT_EQ(entries.size(), 1U) << "its name is known";
}

TEST_F(UnknownKinds, AnEntryThatIsGoneBeforeItIsAskedIsNoFailureOfItsFolder)
{
    vanishing = folder / "in/a.pdf";
    std::vector<FolderEntry> entries;
    EXPECT_TRUE(listFolder(folder / "in", entries));
    EXPECT_FALSE(fs::exists(vanishing));
    EXPECT_EQ(entries.size(), 4U);
    for (const FolderEntry &entry : entries) {
        EXPECT_EQ(entry.isFolder, entry.path.filename() == "b.pdf" || entry.path.filename() == "d")
            << entry.path;
    }
}

} // namespace tallyfold
