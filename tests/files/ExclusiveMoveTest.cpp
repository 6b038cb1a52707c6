#include "files/ExclusiveMove.h"

#include "tests/support/FaultyCalls.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <ostream>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyfold::files {

namespace fs = std::filesystem;
using tests::FaultyCalls;
using tests::FileCall;
using tests::readFile;
using tests::writeFile;

namespace {

/// A folder with the file "from", and its descriptor.
struct Folder {
    tests::TemporaryFolder path;
    int descriptor = ::open(path.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    FaultyCalls calls;

    Folder()
    {
        writeFile(path / "from", "finished");
    }
    ~Folder()
    {
        ::close(descriptor);
    }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;
};

using Way = int (*)(FileCalls &, int, const std::string &, const std::string &);

struct NamedWay {
    const char *name;
    Way way;
};

void PrintTo(const NamedWay &way, std::ostream *stream)
{
    *stream << way.name;
}

class EveryWay : public testing::TestWithParam<NamedWay> {
protected:
    int move()
    {
        return GetParam().way(m_folder.calls, m_folder.descriptor, "from", "to");
    }

    Folder m_folder;
};

} // namespace

TEST_P(EveryWay, MovesAFile)
{
    EXPECT_EQ(move(), 0);
    EXPECT_EQ(readFile(m_folder.path / "to"), "finished");
    EXPECT_FALSE(fs::exists(m_folder.path / "from"));
}

TEST_P(EveryWay, RefusesANameThatIsTaken)
{
    writeFile(m_folder.path / "to", "somebody else's");
    EXPECT_EQ(move(), EEXIST);
    EXPECT_EQ(readFile(m_folder.path / "to"), "somebody else's");
    EXPECT_EQ(readFile(m_folder.path / "from"), "finished");
}

TEST_P(EveryWay, RefusesALinkThatLeadsNowhere)
{
    fs::create_symlink("nowhere", m_folder.path / "to");
    EXPECT_EQ(move(), EEXIST);
    EXPECT_TRUE(fs::is_symlink(m_folder.path / "to"));
    EXPECT_FALSE(fs::exists(m_folder.path / "nowhere"));
    EXPECT_EQ(readFile(m_folder.path / "from"), "finished");
}

TEST_P(EveryWay, GoesOnAfterASignal)
{
    m_folder.calls.rule = [](const FileCall &call) { return call.place % 2 == 0 ? EINTR : 0; };
    EXPECT_EQ(move(), 0);
    EXPECT_EQ(readFile(m_folder.path / "to"), "finished");
    EXPECT_FALSE(fs::exists(m_folder.path / "from"));
}

INSTANTIATE_TEST_SUITE_P(ExclusiveMove, EveryWay,
                         testing::Values(NamedWay{"move", ExclusiveMove::move},
                                         NamedWay{"byRenaming", ExclusiveMove::byRenaming},
                                         NamedWay{"byLinking", ExclusiveMove::byLinking},
                                         NamedWay{"byCopying", ExclusiveMove::byCopying}));

TEST(ExclusiveMove, LinksWhereTheFileSystemCannotRenameWithoutReplacing)
{
    for (const int refusal : {EINVAL, ENOSYS, ENOTSUP}) {
        Folder folder;
        folder.calls.rule = [refusal](const FileCall &call) { return call.kind == "rename" ? refusal : 0; };
        EXPECT_EQ(ExclusiveMove::move(folder.calls, folder.descriptor, "from", "to"), 0);
        EXPECT_EQ(folder.calls.calls().at(1).kind, "link");
        EXPECT_EQ(readFile(folder.path / "to"), "finished");
        EXPECT_FALSE(fs::exists(folder.path / "from"));
    }
}

TEST(ExclusiveMove, CopiesWhereThereAreNoLinksEither)
{
    for (const int refusal : {EPERM, ENOSYS, ENOTSUP, EMLINK}) {
        Folder folder;
        folder.calls.rule = [refusal](const FileCall &call) {
            return call.kind == "rename" ? EINVAL : call.kind == "link" ? refusal : 0;
        };
        EXPECT_EQ(ExclusiveMove::move(folder.calls, folder.descriptor, "from", "to"), 0);
        EXPECT_EQ(readFile(folder.path / "to"), "finished");
        EXPECT_FALSE(fs::exists(folder.path / "from"));
    }
}

TEST(ExclusiveMove, OtherRefusalsAreNotWorkedAround)
{
    for (const int refusal : {EACCES, EROFS, ENOSPC, EIO, EEXIST, ENAMETOOLONG, EXDEV}) {
        Folder folder;
        folder.calls.rule = [refusal](const FileCall &call) { return call.kind == "rename" ? refusal : 0; };
        EXPECT_EQ(ExclusiveMove::move(folder.calls, folder.descriptor, "from", "to"), refusal);
        EXPECT_EQ(folder.calls.calls().size(), 1U);
    }
}

TEST(ExclusiveMove, WhatIsNotThereOrIsALinkIsNotCopied)
{
    Folder folder;
    EXPECT_EQ(ExclusiveMove::byCopying(folder.calls, folder.descriptor, "missing", "to"), ENOENT);
    fs::create_symlink("from", folder.path / "link");
    EXPECT_EQ(ExclusiveMove::byCopying(folder.calls, folder.descriptor, "link", "to"), ELOOP);
    EXPECT_FALSE(fs::exists(folder.path / "to"));
    EXPECT_EQ(readFile(folder.path / "from"), "finished");
}

TEST(ExclusiveMove, ACopyThatFailsLeavesNothingUnderTheNewName)
{
    for (const std::string kind : {"read", "write", "syncData", "close"}) {
        Folder folder;
        folder.calls.rule = [&kind](const FileCall &call) { return call.kind == kind ? EIO : 0; };
        EXPECT_EQ(ExclusiveMove::byCopying(folder.calls, folder.descriptor, "from", "to"), EIO) << kind;
        EXPECT_FALSE(fs::exists(folder.path / "to")) << kind;
        EXPECT_EQ(readFile(folder.path / "from"), "finished") << kind;
    }
}

TEST(ExclusiveMove, ALongFileIsCopiedWhole)
{
    Folder folder;
    std::string text;
    for (int line = 0; line < 100'000; ++line) {
        text += std::to_string(line);
    }
    writeFile(folder.path / "from", text);
    EXPECT_EQ(ExclusiveMove::byCopying(folder.calls, folder.descriptor, "from", "to"), 0);
    EXPECT_EQ(readFile(folder.path / "to"), text);
}

} // namespace tallyfold::files
