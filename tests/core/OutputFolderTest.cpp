#include "core/OutputFolder.h"

#include "core/StampError.h"
#include "tests/support/FaultyCalls.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <string_view>
#include <sys/stat.h>

namespace tallyfold {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using tests::FaultyCalls;
using tests::FileCall;
using tests::readFile;
using tests::TemporaryFolder;
using tests::writeFile;

namespace {

constexpr std::string_view contents = "A copy.";

/// An output folder and its contents.
struct Output {
    TemporaryFolder path;
    FaultyCalls calls;
    std::error_code refusal;
    std::unique_ptr<OutputFolder> folder = OutputFolder::open(path.path(), calls, refusal);

    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const fs::directory_entry &entry : fs::directory_iterator(path.path())) {
            found.push_back(entry.path().filename());
        }
        return found;
    }

    /// Writes a copy and publishes it as `name`.
    bool publish(const QString &name)
    {
        OutputFolder::TemporaryFile file(*folder);
        const bool isWritten = file.sink().write(contents) && file.sink().finish();
        return isWritten && !file.publish(name);
    }

    /// The error thrown by `writeNewFile`.
    std::optional<FileError> errorOfWriting(const QString &name)
    {
        try {
            folder->writeNewFile(name, "a,b\r\n");
        } catch (const FileError &error) {
            return error;
        }
        return std::nullopt;
    }

    void failOn(const std::string &kind, int error)
    {
        calls.rule = [kind, error](const FileCall &call) { return call.kind == kind ? error : 0; };
    }
};

mode_t modeOf(const fs::path &path)
{
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

using Names = std::vector<std::string>;

} // namespace

TEST(OutputFolder, WhatIsNoFolderIsNotOpened)
{
    const TemporaryFolder folder;
    FaultyCalls calls;
    std::error_code error;
    EXPECT_FALSE(OutputFolder::open(folder / "missing", calls, error));
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    writeFile(folder / "file", "");
    EXPECT_FALSE(OutputFolder::open(folder / "file", calls, error));
    EXPECT_EQ(error, std::errc::not_a_directory);
}

TEST(OutputFolder, TheLowestDescriptorIsOneLikeAnyOther)
{
    /// File calls of a program started with its standard streams closed.
    class WithoutStandardFiles final : public files::FileCalls {
    public:
        int openAt(int, const char *, int, mode_t) override
        {
            return 0;
        }
        int close(int descriptor) override
        {
            m_closed = descriptor;
            return 0;
        }
        int m_closed = -1;
    } calls;
    std::error_code refusal;
    EXPECT_TRUE(OutputFolder::open("anywhere", calls, refusal));
    EXPECT_FALSE(refusal);
    EXPECT_EQ(calls.m_closed, 0);
}

TEST(OutputFolder, ACopyIsHiddenUntilItIsPublished)
{
    Output output;
    {
        OutputFolder::TemporaryFile file(*output.folder);
        ASSERT_TRUE(file.sink().write(contents));
        const Names names = output.names();
        ASSERT_EQ(names.size(), 1U);
        const std::string &name = names.front();
        EXPECT_TRUE(name.starts_with(".tallyfold-"));
        EXPECT_TRUE(name.ends_with(".pdf"));
        EXPECT_EQ(name.size(), std::string_view(".tallyfold-").size() + 36 + 4);
        ASSERT_FALSE(file.publish(u"a copy.pdf"_s));
    }
    EXPECT_EQ(output.names(), (Names{"a copy.pdf"}));
    EXPECT_EQ(readFile(output.path / "a copy.pdf"), contents);
}

TEST(OutputFolder, ACopyThatIsGivenUpLeavesNothing)
{
    Output output;
    {
        OutputFolder::TemporaryFile file(*output.folder);
        ASSERT_TRUE(file.sink().write(contents));
    }
    EXPECT_EQ(output.names(), Names());
}

TEST(OutputFolder, ACopyIsOnTheDiskBeforeItGetsItsName)
{
    Output output;
    ASSERT_TRUE(output.publish(u"copy.pdf"_s));
    std::vector<std::string> kinds;
    for (const FileCall &call : output.calls.calls()) {
        kinds.push_back(call.kind);
    }
    EXPECT_EQ(kinds, (std::vector<std::string>{"open", "open", "write", "syncData", "close", "rename"}));
}

TEST(OutputFolder, ACopyIsLookedAtWhenItIsOnTheDiskAndBeforeItGetsItsName)
{
    Output output;
    OutputFolder::TemporaryFile file(*output.folder);
    ASSERT_TRUE(file.sink().write(contents));
    std::string found;
    ASSERT_FALSE(file.publish(u"copy.pdf"_s, [&found](const files::WrittenFile &written) {
        return written.size() == contents.size() && written.readEnd(100, found);
    }));
    EXPECT_EQ(found, contents);
    std::vector<std::string> kinds;
    for (const FileCall &call : output.calls.calls()) {
        kinds.push_back(call.kind);
    }
    EXPECT_EQ(kinds, (std::vector<std::string>{"open", "open", "write", "syncData", "close", "open", "readAt",
                                               "readAt", "close", "rename"}));
}

TEST(OutputFolder, ACopyWithoutProofGetsNoNameAndIsRemoved)
{
    for (const std::string kind : {"", "open", "readAt"}) {
        Output output;
        {
            OutputFolder::TemporaryFile file(*output.folder);
            ASSERT_TRUE(file.sink().write(contents));
            output.failOn(kind, EIO);
            const auto cause = file.publish(u"copy.pdf"_s, [&kind](const files::WrittenFile &written) {
                std::string end;
                return written.readEnd(100, end) && !kind.empty();
            });
            EXPECT_EQ(cause,
                      (FailureCause{FailureCause::During::checkingCopy, FailureCause::Finding::damaged}))
                << kind;
        }
        EXPECT_EQ(output.names(), Names()) << kind;
    }
}

TEST(OutputFolder, NothingIsReplaced)
{
    Output output;
    writeFile(output.path / "copy.pdf", "kept");
    fs::create_symlink("nowhere", output.path / "link.pdf");
    EXPECT_FALSE(output.publish(u"copy.pdf"_s));
    EXPECT_FALSE(output.publish(u"link.pdf"_s));
    EXPECT_EQ(output.errorOfWriting(u"copy.pdf"_s)->code, std::errc::file_exists);
    EXPECT_EQ(output.errorOfWriting(u"link.pdf"_s)->code, std::errc::file_exists);
    EXPECT_EQ(output.names().size(), 2U);
    EXPECT_EQ(readFile(output.path / "copy.pdf"), "kept");
    EXPECT_FALSE(fs::exists(output.path / "nowhere"));
}

TEST(OutputFolder, ACopyThatFailsOnTheWayToTheDiskGetsNoName)
{
    for (const std::string kind : {"write", "syncData", "close", "rename"}) {
        for (const int error : {ENOSPC, EDQUOT, EIO}) {
            Output output;
            output.failOn(kind, error);
            EXPECT_FALSE(output.publish(u"copy.pdf"_s)) << kind;
            EXPECT_EQ(output.names(), Names()) << kind;
        }
    }
}

TEST(OutputFolder, ACopyThatCannotBeBegunIsToldByTheHiddenName)
{
    Output output;
    output.failOn("open", EROFS);
    try {
        const OutputFolder::TemporaryFile file(*output.folder);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const StampError &error) {
        EXPECT_EQ(error, StampError::cannotWrite(QString::fromStdString(output.calls.calls().back().name)));
        EXPECT_TRUE(error.name().startsWith(u".tallyfold-"));
    }
}

TEST(OutputFolder, ACopyThatWasNotBegunIsNotRemoved)
{
    Output output;
    output.failOn("open", EROFS);
    EXPECT_THROW(OutputFolder::TemporaryFile(*output.folder), StampError);
    EXPECT_EQ(output.calls.calls().back().kind, "open");
}

TEST(OutputFolder, ARemovalThatFailsIsPassedOver)
{
    Output output;
    output.calls.rule = [](const FileCall &call) {
        return call.kind == "unlink" || call.kind == "write" ? EIO : 0;
    };
    EXPECT_FALSE(output.publish(u"copy.pdf"_s));
    EXPECT_EQ(output.names().size(), 1U);
    EXPECT_TRUE(output.names().front().starts_with(".tallyfold-"));
}

TEST(OutputFolder, ATableIsWrittenWhole)
{
    Output output;
    EXPECT_EQ(output.errorOfWriting(u"Index.csv"_s), std::nullopt);
    EXPECT_EQ(readFile(output.path / "Index.csv"), "a,b\r\n");
}

TEST(OutputFolder, ATableThatFailsIsRemovedAndTheReasonTold)
{
    for (const std::string kind : {"write", "syncData", "close"}) {
        for (const int error : {ENOSPC, EDQUOT, EIO}) {
            Output output;
            output.failOn(kind, error);
            EXPECT_EQ(output.errorOfWriting(u"Index.csv"_s),
                      (FileError{u"Index.csv"_s, std::error_code(error, std::generic_category())}))
                << kind;
            EXPECT_EQ(output.names(), Names()) << kind;
        }
    }
}

TEST(OutputFolder, AFileSystemWithoutFlushingOfFoldersIsNoFailureButAFailedFlushIs)
{
    Output output;
    for (const int error : {EINVAL, ENOTSUP}) {
        output.failOn("sync", error);
        EXPECT_NO_THROW(output.folder->flush());
    }
    output.failOn("sync", EIO);
    EXPECT_THROW(output.folder->flush(), FileError);
}

TEST(OutputFolder, TheUmaskAndTheFoldersGroupDecideWhoMayRead)
{
    Output output;
    ASSERT_EQ(::chmod(output.path.path().c_str(), 02777), 0);
    const mode_t before = ::umask(0007);
    EXPECT_TRUE(output.publish(u"copy.pdf"_s));
    EXPECT_EQ(output.errorOfWriting(u"Index.csv"_s), std::nullopt);
    output.calls.rule = [](const FileCall &call) {
        return call.kind == "rename" ? EINVAL : call.kind == "link" ? EPERM : 0;
    };
    EXPECT_TRUE(output.publish(u"copied.pdf"_s));
    ::umask(before);
    for (const std::string name : {"copy.pdf", "Index.csv", "copied.pdf"}) {
        EXPECT_EQ(modeOf(output.path / name), 0660U) << name;
    }
}

TEST(OutputFolder, AFolderThatIsGoneTakesNothing)
{
    Output output;
    fs::remove_all(output.path.path());
    EXPECT_THROW(output.publish(u"copy.pdf"_s), StampError);
    EXPECT_EQ(output.errorOfWriting(u"Index.csv"_s)->code, std::errc::no_such_file_or_directory);
}

} // namespace tallyfold
