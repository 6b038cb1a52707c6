#include "pdf/copy/CopyProof.h"

#include "files/MemorySink.h"
#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/OutputPageTree.h"
#include "pdf/syntax/StreamingOutput.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tallyfold::pdf {

namespace {

using tests::TemporaryFolder;

/// A file as copies are written, of `pages` pages, each with `entries` besides what every page has.
std::string fileOfPages(int pages, const std::string &entries = {})
{
    files::MemorySink sink;
    StreamingOutput output(sink);
    OutputPageTree tree(output);
    for (int page = 0; page < pages; ++page) {
        const int content = output.reserve();
        output.writeStream(content, {}, "0 0 9 9 re f\n");
        const int number = output.reserve();
        std::string syntax = "<</Type/Page/Parent ";
        appendInteger(syntax, tree.add(number));
        syntax.append(" 0 R/MediaBox[0 0 612 792]/Contents ");
        appendInteger(syntax, content);
        syntax.append(" 0 R").append(entries).append(">>");
        output.writeObject(number, syntax);
    }
    std::string catalog = "<</Type/Catalog/Pages ";
    appendInteger(catalog, tree.finish());
    catalog.append(" 0 R>>");
    const int number = output.reserve();
    output.writeObject(number, catalog);
    output.finish(number);
    const std::vector<char> bytes = std::move(sink).bytes();
    return {bytes.begin(), bytes.end()};
}

/// Calls on one file that lies in memory.
class MemoryFile final : public files::FileCalls {
public:
    explicit MemoryFile(std::string_view bytes) : m_bytes(bytes) {}

    int openAt(int, const char *, int, mode_t) override
    {
        return 0;
    }
    ssize_t readAt(int, char *bytes, std::size_t count, off_t offset) override
    {
        const std::size_t start = std::min(static_cast<std::size_t>(offset), m_bytes.size());
        return static_cast<ssize_t>(m_bytes.substr(start).copy(bytes, count));
    }
    int close(int) override
    {
        return 0;
    }

private:
    std::string_view m_bytes;
};

/// Whether a file of these bytes has its proof; `size` is what went into it.
bool holds(std::string_view bytes, std::size_t size, std::int64_t pages)
{
    MemoryFile calls(bytes);
    static CopyProof proof;
    return proof.holds(*files::WrittenFile::open(0, "", size, calls), pages);
}

bool holds(std::string_view bytes, std::int64_t pages)
{
    return holds(bytes, bytes.size(), pages);
}

} // namespace

TEST(CopyProof, HoldsForWholeFilesOfAnySizeAndForNoOtherCountOfPages)
{
    const TemporaryFolder folder;
    for (const int pages : {1, 2, 63, 64, 65, 128, 4096, 4097}) {
        SCOPED_TRACE(pages);
        const std::string file = fileOfPages(pages);
        EXPECT_TRUE(holds(file, pages));
        EXPECT_FALSE(holds(file, pages - 1));
        EXPECT_FALSE(holds(file, pages + 1));
        tests::writeFile(folder / "a.pdf", file);
        EXPECT_EQ(tests::soundPages(folder / "a.pdf"), pages);
        const auto written =
            files::WrittenFile::open(AT_FDCWD, folder / "a.pdf", file.size(), files::FileCalls::system());
        EXPECT_TRUE(CopyProof().holds(*written, pages));
    }
}

TEST(CopyProof, HoldsWherePagesAreTooLargeForAnObjectStream)
{
    EXPECT_TRUE(holds(fileOfPages(3, "/Large(" + std::string(50'000, 'x') + ")"), 3));
}

TEST(CopyProof, AFileWithoutPagesHasNone)
{
    const std::string file = fileOfPages(0);
    EXPECT_FALSE(holds(file, 0));
    EXPECT_FALSE(holds(file, -1));
}

TEST(CopyProof, WhatIsCutAnywhereHasNone)
{
    for (const int pages : {1, 100}) {
        const std::string whole = fileOfPages(pages);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const std::string_view cut = std::string_view(whole).substr(0, size);
            EXPECT_FALSE(holds(cut, whole.size(), pages)) << size;
            EXPECT_FALSE(holds(cut, pages)) << size << ", even if no more went into it";
        }
        EXPECT_TRUE(holds(whole, pages));
    }
}

TEST(CopyProof, WhatGrewHasNone)
{
    const std::string whole = fileOfPages(1);
    EXPECT_FALSE(holds(whole + "\n", whole.size(), 1));
}

TEST(CopyProof, DamageOnTheWayToTheLastPageIsSeen)
{
    const std::string whole = fileOfPages(2);
    for (const std::string part :
         {"%PDF-1.7", "%%EOF", "startxref", "/Type/XRef", "/Root ", "/Size ", "/Type/ObjStm", "/First ",
          "/Type/Catalog", "/Pages ", "/Type/Pages", "/Kids[", "/Count 2", "/Parent ", "/MediaBox[",
          "endstream", "endobj", "/Length "}) {
        const std::size_t place = whole.rfind(part);
        ASSERT_NE(place, std::string::npos) << part;
        for (const char damage : {'\0', 'x', '9'}) {
            std::string bytes = whole;
            bytes[place + part.size() - 1] = damage;
            EXPECT_FALSE(holds(bytes, 2)) << part;
        }
    }
}

TEST(CopyProof, NumbersBeyondAllSizesAreSurvived)
{
    const std::string whole = fileOfPages(2);
    for (const std::string key :
         {"/Length ", "/Size ", "/Root ", "/First ", "/N ", "/Pages ", "startxref\n"}) {
        const std::size_t place = whole.rfind(key) + key.size();
        for (const char *number : {"18446744073709551615", "18446744073709551000", "9223372036854775807"}) {
            std::string bytes = whole;
            bytes.replace(place, 1, number);
            EXPECT_FALSE(holds(bytes, 2)) << key << number;
        }
    }
}

TEST(CopyProof, BlocksThatWereNeverWrittenAreSeenInTheEndOfALargeFile)
{
    const std::string whole = fileOfPages(1000);
    // The last stream of objects has the catalog in it, and being compressed it is whole or of no use.
    const std::size_t lastObjects = whole.rfind("/Type/ObjStm");
    for (std::size_t start = lastObjects / 512 * 512 + 512; start < whole.size(); start += 512) {
        std::string bytes = whole;
        const std::size_t end = std::min(start + 512, whole.size());
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(start),
                  bytes.begin() + static_cast<std::ptrdiff_t>(end), '\0');
        EXPECT_FALSE(holds(bytes, 1000)) << start;
    }
}

TEST(CopyProof, DamageOfAnyKindIsSurvived)
{
    std::mt19937 random(5);
    for (const int pages : {2, 90}) {
        const std::string whole = fileOfPages(pages);
        for (int file = 0; file < 20'000; ++file) {
            std::string bytes = whole;
            for (int damage = 0; damage < 3; ++damage) {
                const std::size_t fromEnd = random() % std::min<std::size_t>(whole.size(), 1500);
                const auto byte = file % 2 == 0 ? random() & 0xffU : 48U + random() % 10;
                bytes[whole.size() - 1 - fromEnd] = static_cast<char>(byte);
            }
            (void)holds(bytes, pages); // Whatever it says of damage that no viewer would see.
        }
    }
}

TEST(CopyProof, WhatIsNoFileOfOursHasNone)
{
    tests::PdfBuilder builder;
    builder.addPage("/MediaBox[0 0 100 100]");
    EXPECT_FALSE(holds(builder.file(), 1));
    EXPECT_FALSE(holds("", 1));
}

TEST(CopyProof, WhatIsGoneCannotBeOpenedAndALinkIsNotFollowed)
{
    const TemporaryFolder folder;
    EXPECT_FALSE(files::WrittenFile::open(AT_FDCWD, folder / "gone.pdf", 1, files::FileCalls::system()));
    tests::writeFile(folder / "a.pdf", "x");
    std::filesystem::create_symlink("a.pdf", folder / "link.pdf");
    EXPECT_FALSE(files::WrittenFile::open(AT_FDCWD, folder / "link.pdf", 1, files::FileCalls::system()));
}

} // namespace tallyfold::pdf
