#include "pdf/CopyProof.h"

#include "pdf/FileSink.h"
#include "pdf/NumberFormat.h"
#include "pdf/OutputPageTree.h"
#include "pdf/StreamingOutput.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <random>
#include <string>

namespace tallyfold::pdf {

namespace {

namespace fs = std::filesystem;
using tests::readFile;
using tests::TemporaryFolder;
using tests::writeFile;

/// A file as copies are written, of `pages` pages, each with `entries` besides what every page has.
void writePages(const fs::path &path, int pages, const std::string &entries = {})
{
    const std::unique_ptr<FileSink> sink = FileSink::create(path);
    StreamingOutput output(*sink);
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
    ASSERT_FALSE(output.hasFailed());
}

/// Whether the file at `path`, into which `size` bytes went, has its proof.
bool holds(const fs::path &path, std::uint64_t size, std::int64_t pages)
{
    const auto file = WrittenFile::open(AT_FDCWD, path, size, FileCalls::system());
    CopyProof proof;
    return file && proof.holds(*file, pages);
}

bool holds(const fs::path &path, std::int64_t pages)
{
    return holds(path, fs::file_size(path), pages);
}

} // namespace

TEST(CopyProof, HoldsForWholeFilesOfAnySizeAndForNoOtherCountOfPages)
{
    const TemporaryFolder folder;
    for (const int pages : {1, 2, 63, 64, 65, 128, 4096, 4097}) {
        SCOPED_TRACE(pages);
        const fs::path path = folder / (std::to_string(pages) + ".pdf");
        writePages(path, pages);
        EXPECT_EQ(tests::soundPages(path), pages);
        EXPECT_TRUE(holds(path, pages));
        EXPECT_FALSE(holds(path, pages - 1));
        EXPECT_FALSE(holds(path, pages + 1));
    }
}

TEST(CopyProof, HoldsWherePagesAreTooLargeForAnObjectStream)
{
    const TemporaryFolder folder;
    writePages(folder / "a.pdf", 3, "/Large(" + std::string(50'000, 'x') + ")");
    EXPECT_TRUE(holds(folder / "a.pdf", 3));
}

TEST(CopyProof, OneServesForManyFilesGoodAndBad)
{
    const TemporaryFolder folder;
    CopyProof proof;
    for (const int pages : {70, 1, 300, 2}) {
        const fs::path path = folder / (std::to_string(pages) + ".pdf");
        writePages(path, pages);
        const auto file = WrittenFile::open(AT_FDCWD, path, fs::file_size(path), FileCalls::system());
        const auto other = WrittenFile::open(AT_FDCWD, path, fs::file_size(path) - 1, FileCalls::system());
        EXPECT_FALSE(proof.holds(*other, pages));
        EXPECT_TRUE(proof.holds(*file, pages));
    }
}

TEST(CopyProof, AFileWithoutPagesHasNone)
{
    const TemporaryFolder folder;
    writePages(folder / "a.pdf", 0);
    EXPECT_FALSE(holds(folder / "a.pdf", 0));
    EXPECT_FALSE(holds(folder / "a.pdf", -1));
}

TEST(CopyProof, WhatIsCutAnywhereHasNone)
{
    const TemporaryFolder folder;
    for (const int pages : {1, 100}) {
        const fs::path path = folder / "a.pdf";
        fs::remove(path);
        writePages(path, pages);
        const std::string whole = readFile(path);
        for (std::size_t size = 0; size < whole.size(); size += 3) {
            writeFile(path, whole.substr(0, size));
            EXPECT_FALSE(holds(path, whole.size(), pages)) << size;
            EXPECT_FALSE(holds(path, pages)) << size << ", even if so many went into it";
        }
    }
}

TEST(CopyProof, WhatGrewHasNone)
{
    const TemporaryFolder folder;
    writePages(folder / "a.pdf", 1);
    const std::string whole = readFile(folder / "a.pdf");
    writeFile(folder / "a.pdf", whole + "\n");
    EXPECT_FALSE(holds(folder / "a.pdf", whole.size(), 1));
}

TEST(CopyProof, DamageOnTheWayToTheLastPageIsSeen)
{
    const TemporaryFolder folder;
    const fs::path path = folder / "a.pdf";
    writePages(path, 2);
    const std::string whole = readFile(path);
    for (const std::string part :
         {"%PDF-1.7", "%%EOF", "startxref", "/Type/XRef", "/Root ", "/Size ", "/Type/ObjStm", "/First ",
          "/Type/Catalog", "/Pages ", "/Type/Pages", "/Kids[", "/Count 2", "/Parent ", "/MediaBox[",
          "endstream", "endobj", "/Length "}) {
        const std::size_t place = whole.rfind(part);
        ASSERT_NE(place, std::string::npos) << part;
        for (const char damage : {'\0', 'x', '9'}) {
            std::string bytes = whole;
            bytes[place + part.size() - 1] = damage;
            writeFile(path, bytes);
            EXPECT_FALSE(holds(path, 2)) << part;
        }
    }
}

TEST(CopyProof, BlocksThatWereNeverWrittenAreSeenInTheEndOfALargeFile)
{
    const TemporaryFolder folder;
    const fs::path path = folder / "a.pdf";
    writePages(path, 1000);
    const std::string whole = readFile(path);
    // The last stream of objects has the catalog in it, and being compressed it is whole or of no use.
    const std::size_t lastObjects = whole.rfind("/Type/ObjStm");
    for (std::size_t start = lastObjects / 512 * 512 + 512; start < whole.size(); start += 512) {
        std::string bytes = whole;
        const std::size_t end = std::min(start + 512, whole.size());
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(start),
                  bytes.begin() + static_cast<std::ptrdiff_t>(end), '\0');
        writeFile(path, bytes);
        EXPECT_FALSE(holds(path, 1000)) << start;
    }
}

TEST(CopyProof, DamageOfAnyKindIsSurvived)
{
    const TemporaryFolder folder;
    const fs::path path = folder / "a.pdf";
    std::mt19937 random(5);
    for (const int pages : {2, 90}) {
        fs::remove(path);
        writePages(path, pages);
        const std::string whole = readFile(path);
        for (int file = 0; file < 3000; ++file) {
            std::string bytes = whole;
            for (int damage = 0; damage < 3; ++damage) {
                const std::size_t fromEnd = random() % std::min<std::size_t>(whole.size(), 1500);
                const auto byte = file % 2 == 0 ? random() & 0xffU : 48U + random() % 10;
                bytes[whole.size() - 1 - fromEnd] = static_cast<char>(byte);
            }
            writeFile(path, bytes);
            (void)holds(path, pages); // Whatever it says of damage that no viewer would see.
        }
    }
}

TEST(CopyProof, WhatIsNoFileOfOursHasNone)
{
    const TemporaryFolder folder;
    tests::writeSample(folder / "a.pdf", 2);
    EXPECT_FALSE(holds(folder / "a.pdf", 2));
    writeFile(folder / "a.pdf", "");
    EXPECT_FALSE(holds(folder / "a.pdf", 1));
}

} // namespace tallyfold::pdf
