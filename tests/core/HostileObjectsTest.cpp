#include "core/SourceClassifier.h"
#include "tests/core/StampOutcome.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

// Objects that refer to themselves, exist more than once, or have offsets that are out of range.

namespace tallyfold {

using tests::outcomeOf;
using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;

namespace {

const std::string letter = "/MediaBox[0 0 612 792]";

/// A file of these objects, each with number, generation and syntax, in order. Its cross-reference table has
/// the last object with each number, with the generation `generation`.
std::string fileOf(const std::vector<std::pair<std::string, std::string>> &objects,
                   const std::string &generation = "00000")
{
    std::string file = "%PDF-1.7\n";
    std::vector<std::size_t> places(10);
    for (const auto &[id, syntax] : objects) {
        places[static_cast<std::size_t>(id.front() - '0')] = file.size();
        file += id + " obj\n" + syntax + "\nendobj\n";
    }
    const std::string start = std::to_string(file.size());
    file += "xref\n0 10\n0000000000 65535 f \n";
    for (std::size_t number = 1; number < places.size(); ++number) {
        const std::string place = std::to_string(places[number]);
        file += std::string(10 - place.size(), '0') + place +
                (places[number] == 0 ? " 65535 f \n" : ' ' + generation + " n \n");
    }
    return file + "trailer\n<</Size 10/Root 1 0 R>>\nstartxref\n" + start + "\n%%EOF\n";
}

/// `number` in eight bytes, in big-endian order.
std::string eightBytes(std::uint64_t number)
{
    std::string bytes;
    for (int byte = 7; byte >= 0; --byte) {
        bytes.push_back(static_cast<char>(number >> (8 * byte) & 0xffU));
    }
    return bytes;
}

} // namespace

TEST(HostileObjects, OfObjectsWithOneNumberTheTablesCounts)
{
    const std::string tree = "<</Type/Pages/Kids[3 0 R]/Count 1>>";
    const std::string page = "<</Type/Page/Parent 2 0 R" + letter + ">>";
    EXPECT_EQ(outcomeOf(fileOf({{"1 0", "<</Type/Catalog/Pages 2 0 R>>"},
                                {"2 0", "<</Type/Pages/Kids[]/Count 0>>"},
                                {"3 0", page},
                                {"2 0", tree}}))
                  .pages,
              1);
    // Generations other than those in the table, and references to generations that do not exist.
    for (const char *generation : {"00000", "00001", "65535", "99999"}) {
        for (const char *own : {"0", "1", "65535", "99999"}) {
            const tests::StampOutcome outcome =
                outcomeOf(fileOf({{"1 0", "<</Type/Catalog/Pages 2 0 R>>"},
                                  {"2 0", tree},
                                  {std::string("3 ") + own, page},
                                  {"3 0", "<</Type/Page/MediaBox[0 0 9 9]>>"}},
                                 generation));
            EXPECT_TRUE(outcome.isRefused() || outcome.pages == 1) << generation << ' ' << own;
        }
    }
}

TEST(HostileObjects, ObjectsOnlyInTheStreamOfAHybridReferenceFileAreFound)
{
    // The page is missing in the table but present in the hybrid cross-reference stream.
    std::string file = "%PDF-1.5\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n";
    const std::string tree = std::to_string(file.size());
    file += "2 0 obj\n<</Type/Pages/Kids[3 0 R]/Count 1>>\nendobj\n";
    const std::size_t page = file.size();
    file += "3 0 obj\n<</Type/Page/Parent 2 0 R/MediaBox[0 0 300 500]>>\nendobj\n";
    const std::string stream = std::to_string(file.size());
    const std::string rows = '\1' + eightBytes(page);
    file += "4 0 obj\n<</Type/XRef/Size 5/Index[3 1]/W[1 8 0]/Root 1 0 R/Length 9>>stream\n" + rows +
            "\nendstream\nendobj\n";
    const std::string table = std::to_string(file.size());
    file += "xref\n0 4\n0000000000 65535 f \n0000000009 00000 n \n" + std::string(10 - tree.size(), '0') +
            tree + " 00000 n \n0000000000 65535 f \ntrailer\n<</Size 5/Root 1 0 R/XRefStm " + stream +
            ">>\nstartxref\n" + table + "\n%%EOF\n";
    const TemporaryFolder folder;
    tests::writeHostile(folder / "a.pdf", file);
    EXPECT_EQ(tests::outcomeOfFile(folder / "a.pdf").pages, 1);
    const std::string info = tests::runTool({"pdfinfo", folder / "copy.pdf"}).output;
    EXPECT_NE(info.find("300 x 500"), std::string::npos) << info;
}

TEST(HostileObjects, OnesThatAreNothingButReferencesGiveAnAnswer)
{
    PdfBuilder builder;
    const int self = builder.reserve();
    builder.set(self, reference(self));
    const int one = builder.reserve();
    const int two = builder.add(reference(one));
    builder.set(one, reference(two));
    const int length = builder.reserve();
    builder.set(length, "<</Length " + reference(length) + ">>stream\n0 0 9 9 re f\nendstream");
    const std::string annotation =
        "<</Type/Annot/Subtype " + reference(one) + "/Rect " + reference(self) + ">>";
    for (const int number : {self, one, length}) {
        const std::string value = ' ' + reference(number);
        builder.addPage("/MediaBox" + value + "/CropBox" + value + "/Rotate" + value + "/UserUnit" + value +
                        "/Resources" + value + "/Contents" + value + "/Annots[" + value + annotation + "]");
    }
    const tests::StampOutcome outcome = outcomeOf(builder.file());
    EXPECT_TRUE(outcome.isRefused() || outcome.pages == 3);
    for (const int number : {self, one}) {
        builder.addToCatalog("/AcroForm " + reference(number) + "/OCProperties " + reference(number));
        const tests::StampOutcome other = outcomeOf(builder.file());
        EXPECT_TRUE(other.isRefused() || other.pages == 3);
    }
}

TEST(HostileObjects, DictionariesWithinDictionariesWithoutEndAreRefusedOrCut)
{
    for (const std::string open : {"<</A ", "<</A[", "[<</A "}) {
        PdfBuilder builder;
        std::string deep;
        std::string close;
        for (int level = 0; level < 20'000; ++level) {
            deep += open;
            close += open == "<</A " ? ">>" : open == "<</A[" ? "]>>" : ">>]";
        }
        builder.addPage(letter + "/Resources<</ExtGState<</G " + deep + "null" + close + ">>>>");
        const tests::StampOutcome outcome = outcomeOf(builder.file());
        EXPECT_TRUE(outcome.isRefused() || outcome.pages == 1) << open;
    }
}

TEST(HostileObjects, AChainOfObjectsAsLongAsTheFileIsCopied)
{
    PdfBuilder builder;
    int last = builder.add("<<>>");
    for (int link = 0; link < 50'000; ++link) {
        last = builder.add("<</Next " + reference(last) + ">>");
    }
    builder.addPage(letter + "/Resources<</ExtGState<</G " + reference(last) + ">>>>");
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileObjects, AFormThatNamesItsFieldsAgainAndAgainIsDrawn)
{
    PdfBuilder builder;
    const int field = builder.reserve();
    std::string many;
    for (int time = 0; time < 100'000; ++time) {
        many += reference(field) + ' ';
    }
    builder.set(field, "<</Type/Annot/Subtype/Widget/FT/Tx/T(a)/V(value)/DA(/Helv 9 Tf 0 g)/Rect[9 9 90 30]"
                       "/Kids[" +
                           reference(field) + "]>>");
    builder.addPage(letter + "/Annots[" + reference(field) + "]");
    builder.addToCatalog("/AcroForm<</NeedAppearances true/Fields[" + many + "]>>");
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileObjects, MatricesOfAnyKindGiveAPage)
{
    PdfBuilder builder;
    std::string annotations;
    for (const char *matrix :
         {"[0 0 0 0 0 0]", "[nan 0 0 nan 0 0]", "[1e999 0 0 1e999 0 0]", "[--5 1.2.3 0 1 0 0]",
          "[1 1 1 1 0 0]", "[1e38 0 0 1e38 1e38 1e38]", "[1 0]", "7", "[(a) /b null 1 2 3]"}) {
        const std::string form = reference(builder.addStream(
            std::string("/Type/XObject/Subtype/Form/BBox[0 0 9 9]/Matrix") + matrix, "0 0 9 9 re f"));
        annotations += "<</Type/Annot/Subtype/Stamp/Rect[0 0 9 9]/AP<</N " + form + ">>>>";
        builder.addPage(letter + "/Resources<</XObject<</X " + form +
                        ">>/Pattern<</P<</PatternType 2/Matrix" + matrix + ">>>>>>/Contents " +
                        reference(builder.addStream("", "/X Do")));
    }
    builder.addPage(letter + "/Annots[" + annotations + "]");
    EXPECT_EQ(outcomeOf(builder.file()).pages, 10);
}

TEST(HostileObjects, OffsetsOfElevenDigitsAreFollowed)
{
    const TemporaryFolder folder;
    std::ofstream file(folder / "a.pdf", std::ios::binary);
    file << "%PDF-1.7\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n";
    file.seekp(static_cast<std::streamoff>(12'000'000'000)); // A hole, which takes no disk space.
    std::string rows = '\0' + eightBytes(0) + '\1' + eightBytes(9);
    const auto add = [&](const std::string &object) {
        rows += '\1' + eightBytes(static_cast<std::uint64_t>(file.tellp()));
        file << object << "\nendobj\n";
    };
    add("2 0 obj\n<</Type/Pages/Kids[3 0 R]/Count 1>>");
    add("3 0 obj\n<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]>>");
    const auto end = file.tellp();
    rows += '\1' + eightBytes(static_cast<std::uint64_t>(end));
    file << "4 0 obj\n<</Type/XRef/Size 5/W[1 8 0]/Root 1 0 R/Length " << rows.size() << ">>stream\n"
         << rows << "\nendstream\nendobj\nstartxref\n"
         << end << "\n%%EOF\n";
    file.close();
    ASSERT_TRUE(file);
    EXPECT_EQ(tests::outcomeOfFile(folder / "a.pdf").pages, 1);
}

} // namespace tallyfold
