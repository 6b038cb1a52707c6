#include "pdf/copy/CopyVerifier.h"

#include "files/MemorySink.h"
#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/OutputPageTree.h"
#include "pdf/syntax/StreamingOutput.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <functional>
#include <map>
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
    static CopyVerifier proof;
    return proof.verify(*files::WrittenFile::open(0, "", size, calls), pages);
}

bool holds(std::string_view bytes, std::int64_t pages)
{
    return holds(bytes, bytes.size(), pages);
}

} // namespace

TEST(CopyVerifier, HoldsForWholeFilesOfAnySizeAndForNoOtherCountOfPages)
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
        EXPECT_TRUE(CopyVerifier().verify(*written, pages));
    }
}

TEST(CopyVerifier, HoldsWherePagesAreTooLargeForAnObjectStream)
{
    EXPECT_TRUE(holds(fileOfPages(3, "/Large(" + std::string(50'000, 'x') + ")"), 3));
}

TEST(CopyVerifier, AFileWithoutPagesHasNone)
{
    const std::string file = fileOfPages(0);
    EXPECT_FALSE(holds(file, 0));
    EXPECT_FALSE(holds(file, -1));
}

TEST(CopyVerifier, WhatIsCutAnywhereHasNone)
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

TEST(CopyVerifier, WhatGrewHasNone)
{
    const std::string whole = fileOfPages(1);
    EXPECT_FALSE(holds(whole + "\n", whole.size(), 1));
}

TEST(CopyVerifier, DamageOnTheWayToTheLastPageIsSeen)
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

TEST(CopyVerifier, NumbersBeyondAllSizesAreSurvived)
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

namespace {

/// How a test changes one part of a file.
using Edit = std::function<void(std::string &)>;
using Edits = std::map<std::string, Edit>;

/// A row of a cross-reference.
std::string row(int kind, std::uint64_t where, int index = 0)
{
    std::string bytes(1, static_cast<char>(kind));
    for (int shift = 32; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<char>(where >> static_cast<unsigned>(shift) & 0xffU));
    }
    return bytes.append({'\0', static_cast<char>(index)});
}

/// A file of two pages as small copies are written, put together from parts: whatever an edit does to one of
/// them, the others fit what came of it. Its last page is in the stream of objects, or `pageAlone`.
std::string assembled(const Edits &edits = {}, bool pageAlone = false)
{
    const auto part = [&edits](const std::string &name, std::string text) {
        if (const auto edit = edits.find(name); edit != edits.end()) {
            edit->second(text);
        }
        return text;
    };
    const auto numbered = [](int number, const std::string &syntax) {
        return std::to_string(number) + " 0 obj\n" + syntax;
    };
    const auto stream = [](const std::string &entries, const std::string &data) {
        return "<<" + entries + ">>stream\n" + data + "\nendstream\nendobj\n";
    };
    const std::string catalog = part("catalog", "<</Type/Catalog/Pages 2 0 R>>\n");
    const std::string node = part("node", "<</Type/Pages/Kids[3 0 R 4 0 R ]/Count 2>>\n");
    const std::string page = part("page", "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>\n");
    const std::string body = part("body", catalog + node + page);
    const std::string head = part("head", "1 0 2 " + std::to_string(catalog.size()) + " 4 " +
                                              std::to_string(catalog.size() + node.size()) + ' ');
    std::string file = part("header", "%PDF-1.7\n");
    const std::size_t pagePlace = file.size();
    file += part("page alone", numbered(4, page + "endobj\n"));
    const std::size_t objectsPlace = file.size();
    file +=
        part("objects", numbered(5, stream(part("entries of objects",
                                                "/Type/ObjStm/N 3/First " + std::to_string(head.size()) +
                                                    "/Length " + std::to_string(head.size() + body.size())),
                                           head + body)));
    const std::size_t place = file.size();
    const std::string rows = part("rows", row(0, 0) + row(2, 5, 0) + row(2, 5, 1) + row(0, 0) +
                                              (pageAlone ? row(1, pagePlace) : row(2, 5, 2)) +
                                              row(1, objectsPlace) + row(1, place));
    const std::string entries = "/Type/XRef/W[1 5 2]/Size 7/Root 1 0 R/Length " + std::to_string(rows.size());
    file += part("references", numbered(6, stream(part("entries of references", entries), rows)));
    return file + part("end", "startxref\n" + std::to_string(place) + "\n%%EOF\n");
}

Edit replaced(const std::string &from, const std::string &to)
{
    return [from, to](std::string &text) {
        const std::size_t place = text.find(from);
        ASSERT_NE(place, std::string::npos) << from;
        text.replace(place, from.size(), to);
    };
}

Edit appended(const std::string &more)
{
    return [more](std::string &text) { text += more; };
}

/// Another row for the object `number`.
Edit rowReplaced(int number, const std::string &by)
{
    return [number, by](std::string &rows) { rows.replace(static_cast<std::size_t>(number) * 8, 8, by); };
}

} // namespace

TEST(CopyVerifier, EachPartOnTheWayCountsByItself)
{
    ASSERT_TRUE(holds(assembled(), 2));
    const std::vector<std::pair<std::string, Edit>> damages{
        {"header", replaced("7", "6")},
        {"catalog", replaced("/Catalog", "/Outline")},
        {"catalog", replaced("2 0 R", "2 1 R")},
        {"catalog", replaced("2 0 R", "4 0 R")},
        {"catalog", replaced(">>\n", ">> ")},
        {"node", replaced("/Pages", "/Pagen")},
        {"node", replaced("<</Type/Pages", "<</Type/Pages/Parent 1 0 R")},
        {"node", replaced("/Kids[", "/Kids[ ")},
        {"node", replaced("3 0 R ", "")},
        {"node", replaced("4 0 R ", "3 0 R ")},
        {"node", replaced(" 4 0 R ]", "]")},
        {"node", replaced("4 0 R ", "4 0 R 5 ")},
        {"node", replaced("]/Count", "]/Counts")},
        {"node", replaced("Count 2", "Count 3")},
        {"node", replaced("Count 2", "Count 2/X 1")},
        {"page", replaced("/Page/", "/Pag/")},
        {"page", replaced("2 0 R", "1 0 R")},
        {"page", replaced("/MediaBox", "/MediaBix")},
        {"page", replaced(">>\n", ">>")},
        {"head", replaced("1 0", "7 0")},
        {"head", replaced("1 0", "1 x")},
        {"head", replaced("1 0", "1/0")},
        {"head", replaced("1 0 2 ", "1 0 2/")},
        {"head", replaced(" 2", "/2")},
        {"head", replaced("1 0", "1 30")},
        {"head", replaced(" 4 ", " 4 9")},
        {"body", replaced("9 9]>>\n", "")},
        {"objects", replaced("5 0 obj", "7 0 obj")},
        {"objects", replaced("\nendstream", " endstream")},
        {"objects", replaced("obj\n<<", "obj\n< ")},
        {"entries of objects", replaced("/ObjStm", "/ObjStn")},
        {"entries of objects", replaced("/First", "/Furst")},
        {"entries of objects", replaced("/First ", "/First 9")},
        {"entries of objects", replaced("/Length", "/Longth")},
        {"entries of objects", replaced("/Length 1", "/Length 2")},
        {"entries of references", replaced("/XRef", "/XRof")},
        {"entries of references", replaced("[1 5 2]", "[1 4 2]")},
        {"entries of references", replaced("/Size 7", "/Size 6")},
        {"entries of references", replaced("/Size 7", "/Size 8")},
        {"entries of references", replaced("/Size 7", "/Size x")},
        {"entries of references", replaced("/Root 1", "/Root x")},
        {"entries of references", replaced("/Root 1", "/Root 2")},
        {"entries of references", replaced("/Root 1", "/Root 7")},
        {"rows", appended(row(0, 0))},
        {"rows", [](std::string &rows) { rows.resize(rows.size() - 8); }},
        {"rows", [](std::string &rows) { rows.resize(rows.size() - 1); }},
        {"rows", rowReplaced(1, row(0, 5, 0))},
        {"rows", rowReplaced(1, row(1, 5, 0))},
        {"rows", rowReplaced(1, row(2, 5, 1))},
        {"rows", rowReplaced(1, row(2, 5, 3))},
        {"rows", rowReplaced(1, row(2, 6, 0))},
        {"rows", rowReplaced(1, row(2, 7, 0))},
        {"rows", rowReplaced(2, row(2, 5, 2))},
        {"rows", rowReplaced(4, row(1, 10))},
        {"rows", rowReplaced(4, row(1, 1ULL << 39U))},
        {"rows", rowReplaced(5, row(0, 9))},
        {"rows", rowReplaced(5, row(1, 9))},
        {"rows", rowReplaced(5, row(1, 1ULL << 39U))},
        {"references", replaced("6 0 obj", "7 0 obj")},
        {"references", replaced("6 0 obj", "x 0 obj")},
        {"references", appended("\n")},
        {"end", replaced("startxref", "startxrif")},
        {"end", replaced("\n%%EOF\n", "\n%%EOF")},
        {"end", replaced("\n%%EOF\n", "\n%%EOF\n\n")},
        {"end", replaced("startxref\n", "startxref\n9")},
        {"end", replaced("startxref\n", "startxref\nx")},
        {"end", [](std::string &text) { text = "startxref\n\n%%EOF\n"; }},
        {"catalog", replaced("2 0 R", "x")},
    };
    for (std::size_t index = 0; index < damages.size(); ++index) {
        const auto &[name, edit] = damages[index];
        EXPECT_TRUE(holds(assembled(), 2));
        EXPECT_FALSE(holds(assembled({{name, edit}}), 2)) << "edit " << index << " of " << name;
    }
}

TEST(CopyVerifier, AStreamOfObjectsMayHaveAnyNumber)
{
    const std::string file = assembled({{"entries of references", replaced("/Root 1", "/Root 5")},
                                        {"head", replaced("1 0", "5 0")},
                                        {"objects", replaced("5 0 obj", "1 0 obj")},
                                        {"rows", [](std::string &rows) {
                                             const std::string stream = rows.substr(40, 8);
                                             rows = row(0, 0) + stream + row(2, 1, 1) + row(0, 0) +
                                                    row(2, 1, 2) + row(2, 1, 0) + rows.substr(48);
                                         }}});
    EXPECT_TRUE(holds(file, 2));
    MemoryFile calls(file);
    EXPECT_TRUE(CopyVerifier().verify(*files::WrittenFile::open(0, "", file.size(), calls), 2));
}

TEST(CopyVerifier, TheLengthOfAStreamStandsAmongItsEntries)
{
    std::string length = "000";
    std::string file;
    for (int round = 0; round < 2; ++round) { // The second knows what the first came to.
        file = assembled({{"catalog", replaced(">>", "/Length " + length + ">>")},
                          {"entries of objects", [&length](std::string &entries) {
                               const std::size_t key = entries.find("/Length ");
                               length = entries.substr(key + 8);
                               entries.resize(key);
                           }}});
    }
    ASSERT_EQ(length.size(), 3U);
    ASSERT_NE(file.find("R/Length " + length + ">>"), std::string::npos);
    EXPECT_FALSE(holds(file, 2));
}

TEST(CopyVerifier, APageAloneIsFoundByItsNumber)
{
    EXPECT_TRUE(holds(assembled({}, true), 2));
    EXPECT_FALSE(holds(assembled({{"page alone", replaced("4 0 obj", "3 0 obj")}}, true), 2));
    EXPECT_FALSE(holds(assembled({{"page alone", replaced("4 0 obj", "4 0 obJ")}}, true), 2));
}

TEST(CopyVerifier, TheWayToTheLastPageLeadsThroughTenNodesAtMost)
{
    for (const int nodes : {1, 2, 9, 10, 11}) {
        // Below the topmost node others, of one kid each, in the place of the page.
        std::string body = "<</Type/Catalog/Pages 2 0 R>>\n";
        std::string head = "1 0 ";
        std::string rows = row(0, 0) + row(2, 5, 0);
        const auto number = [](int depth) { return depth == 0 ? 2 : 6 + depth; };
        std::map<int, std::string> objects;
        for (int depth = 0; depth < nodes; ++depth) {
            objects[number(depth)] =
                "<</Type/Pages" +
                (depth > 0 ? "/Parent " + std::to_string(number(depth - 1)) + " 0 R" : std::string()) +
                "/Kids[" + std::to_string(number(depth + 1)) + " 0 R ]/Count 1>>\n";
        }
        objects[number(nodes)] =
            "<</Type/Page/Parent " + std::to_string(number(nodes - 1)) + " 0 R/MediaBox[0 0 9 9]>>\n";
        std::map<int, std::string> rowOf;
        int index = 0;
        for (const auto &[object, syntax] : objects) {
            head += std::to_string(object) + ' ' + std::to_string(body.size()) + ' ';
            body += syntax;
            rowOf[object] = row(2, 5, ++index);
        }
        const std::string file = assembled(
            {{"body", [&](std::string &text) { text = body; }},
             {"head", [&](std::string &text) { text = head; }},
             {"rows",
              [&](std::string &text) {
                  for (const auto &[object, bytes] : rowOf) {
                      text.resize(std::max(text.size(), static_cast<std::size_t>(object) * 8));
                      text.replace(static_cast<std::size_t>(object) * 8, 8, bytes);
                  }
                  // The cross-reference is the last object.
                  text += row(0, 0);
              }},
             {"entries of references",
              [&](std::string &text) { replaced("/Size 7", "/Size " + std::to_string(8 + nodes))(text); }},
             {"references",
              [&](std::string &text) { replaced("6 0", std::to_string(7 + nodes) + " 0")(text); }}});
        EXPECT_EQ(holds(file, 1), nodes <= 10) << nodes;
    }
}

TEST(CopyVerifier, LengthsThatLeadBackBeforeTheDataAreSurvived)
{
    // The end of a stream in its own entries, and a length that makes the whole stream end there.
    const std::string trap = "\nendstream\nendobj\n";
    for (const std::string part : {"entries of objects", "entries of references"}) {
        const std::string file = assembled({{part, [&](std::string &entries) {
                                                 const std::size_t place = entries.find("/Length ");
                                                 entries.resize(place);
                                                 entries += trap;
                                                 // Object number, "<<" and the entries come before the data.
                                                 const std::size_t end = 10 + entries.size();
                                                 const std::size_t key = 8 + 20;
                                                 const std::size_t start = end + key + 9;
                                                 entries +=
                                                     "/Length " + std::to_string(end - start - trap.size());
                                             }}});
        EXPECT_FALSE(holds(file, 2));
    }
}

TEST(CopyVerifier, BlocksThatWereNeverWrittenAreSeenInTheEndOfALargeFile)
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

TEST(CopyVerifier, DamageOfAnyKindIsSurvived)
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

TEST(CopyVerifier, WhatIsNoFileOfOursHasNone)
{
    tests::PdfBuilder builder;
    builder.addPage("/MediaBox[0 0 100 100]");
    EXPECT_FALSE(holds(builder.file(), 1));
    EXPECT_FALSE(holds("", 1));
}

TEST(CopyVerifier, WhatIsGoneCannotBeOpenedAndALinkIsNotFollowed)
{
    const TemporaryFolder folder;
    EXPECT_FALSE(files::WrittenFile::open(AT_FDCWD, folder / "gone.pdf", 1, files::FileCalls::system()));
    tests::writeFile(folder / "a.pdf", "x");
    std::filesystem::create_symlink("a.pdf", folder / "link.pdf");
    EXPECT_FALSE(files::WrittenFile::open(AT_FDCWD, folder / "link.pdf", 1, files::FileCalls::system()));
}

} // namespace tallyfold::pdf
