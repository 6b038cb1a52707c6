#include "core/check/HashList.h"

#include "core/check/HashLines.h"
#include "core/check/ProductionFolder.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

namespace tallyfold::check {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using tests::TemporaryFolder;

namespace {

constexpr const char *digestOfNothing = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

Sha256 digestOf(const fs::path &path)
{
    return std::get<HashedFile>(sha256Of(path)).digest;
}

/// A production of one copy, which is no PDF file: hashing does not mind.
void writeProduction(const fs::path &folder)
{
    tests::writeFile(folder / "Production Index.csv",
                     "File,Stamped Copy,First Bates,Last Bates,Pages,Status\r\n"
                     "a.pdf,a.pdf,ABC000001,ABC000001,1,stamped\r\n");
    tests::writeFile(folder / "a.pdf", "");
}

} // namespace

TEST(Sha256, IsThatOfTheWholeFile)
{
    const TemporaryFolder folder;
    for (const std::size_t size : {0UL, 1UL, 262'143UL, 262'144UL, 262'145UL, 1'000'000UL}) {
        tests::writeFile(folder / "file", std::string(size, 'x'));
        const auto hashed = std::get<HashedFile>(sha256Of(folder / "file"));
        EXPECT_EQ(hashed.size, static_cast<std::int64_t>(size));
        EXPECT_EQ(hexadecimal(hashed.digest).toStdString(),
                  tests::runTool({"sha256sum", folder / "file"}).output.substr(0, 64));
    }
}

TEST(Sha256, IsOfRegularFilesAlone)
{
    const TemporaryFolder folder;
    ASSERT_EQ(tests::runTool({"mkfifo", folder / "pipe"}).exitCode, 0);
    EXPECT_EQ(std::get<std::error_code>(sha256Of(folder / "pipe")), std::errc::invalid_argument);
    EXPECT_EQ(std::get<std::error_code>(sha256Of(folder.path())), std::errc::invalid_argument);
    EXPECT_EQ(std::get<std::error_code>(sha256Of(folder / "none")), std::errc::no_such_file_or_directory);
}

TEST(Sha256, StopsWhenToldTo)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "file", "x");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(std::get<std::error_code>(sha256Of(folder / "file", stop.get_token())),
              std::errc::operation_canceled);
}

TEST(HashLines, AreReadAsTheyAreWritten)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "empty", "");
    const Sha256 digest = digestOf(folder / "empty");
    EXPECT_EQ(hashLine(digest, "a b.pdf").toStdString(), std::string(digestOfNothing) + "  a b.pdf\n");
    for (const std::string name : {"a", " a ", "*a", "\\", "a\nb", "a\rb\\n", "\xFF", "#a"}) {
        const HashLines lines = HashLines::of(hashLine(digest, name));
        EXPECT_TRUE(lines.linesNotUnderstood.empty()) << name;
        EXPECT_EQ(lines.digests, (std::map<std::string, Sha256>{{name, digest}})) << name;
    }
}

TEST(HashLines, AreUnderstoodAsOtherToolsWriteThem)
{
    const std::string digest = digestOfNothing;
    for (const std::string &line : {digest + " *a.pdf\n", digest + "  a.pdf\r\n", digest + "  a.pdf",
                                    QByteArray(digestOfNothing).toUpper().toStdString() + "  a.pdf\n",
                                    "# comment\n\n" + digest + "  a.pdf\n"}) {
        const HashLines lines = HashLines::of(line);
        EXPECT_TRUE(lines.linesNotUnderstood.empty()) << line;
        EXPECT_TRUE(lines.digests.contains("a.pdf")) << line;
    }
}

TEST(HashLines, ThatAreNotUnderstoodAreNumbered)
{
    const std::string digest = digestOfNothing;
    for (const std::string &line : {digest, digest + "  ", digest + " a.pdf", digest.substr(1) + "  a.pdf",
                                    "g" + digest.substr(1) + "  a.pdf", "\\" + digest + "  a\\t",
                                    "\\" + digest + "  a\\", digest + "  first"}) {
        EXPECT_EQ(HashLines::of(digest + "  first\n" + line + "\n").linesNotUnderstood,
                  std::vector<std::int64_t>{2})
            << line;
    }
}

TEST(HashList, IsNeverReplaced)
{
    const TemporaryFolder folder;
    writeProduction(folder.path());
    EXPECT_EQ(std::get<HashesWritten>(writeHashList(folder.path())).files, 2);
    const std::string before = tests::readFile(folder / "Production Hashes.sha256");
    tests::writeFile(folder / "a.pdf", "another");
    const auto again = std::get<HashesNotWritten>(writeHashList(folder.path()));
    EXPECT_EQ(again.error, std::errc::file_exists);
    EXPECT_EQ(again.file, ProductionFolder::hashListName);
    EXPECT_EQ(tests::readFile(folder / "Production Hashes.sha256"), before);
}

TEST(HashList, IsNotWrittenAfterAStop)
{
    const TemporaryFolder folder;
    writeProduction(folder.path());
    std::stop_source stop;
    const auto stopAtOnce = [&](const Progress &) { stop.request_stop(); };
    const auto stopped =
        std::get<HashesNotWritten>(writeHashList(folder.path(), stopAtOnce, stop.get_token()));
    EXPECT_EQ(stopped.error, std::errc::operation_canceled);
    EXPECT_FALSE(fs::exists(folder / "Production Hashes.sha256"));
}

TEST(HashList, NeedsAnIndexThatIsUnderstood)
{
    const TemporaryFolder folder;
    EXPECT_EQ(std::get<HashesNotWritten>(writeHashList(folder.path())).error,
              std::errc::no_such_file_or_directory);
    tests::writeFile(folder / "Production Index.csv", "File\r\n");
    EXPECT_EQ(std::get<HashesNotWritten>(writeHashList(folder.path())).error, std::errc::bad_message);
    EXPECT_EQ(std::get<HashesNotWritten>(writeHashList(folder / "none")).error,
              std::errc::no_such_file_or_directory);
}

} // namespace tallyfold::check
