#include "core/SourceClassifier.h"
#include "tests/core/StampOutcome.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace tallyfold {

using tests::outcomeOf;
using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;

namespace {

const std::string letter = "/MediaBox[0 0 612 792]";

std::string ordinaryFile()
{
    PdfBuilder builder;
    const int content = builder.addStream("", "BT /F 12 Tf 72 700 Td (text) Tj ET");
    builder.addPage(letter + "/Contents " + reference(content));
    return builder.file();
}

/// A document of one page with the page tree `tree`, in which "PAGE" is replaced by that page.
std::string withTree(std::string tree)
{
    PdfBuilder builder;
    const std::string page = reference(builder.add("<</Type/Page" + letter + ">>"));
    for (std::size_t place = tree.find("PAGE"); place != std::string::npos; place = tree.find("PAGE")) {
        tree.replace(place, 4, page);
    }
    builder.addToCatalog("/Pages " + reference(builder.add(tree))); // The last of two entries counts.
    return builder.file();
}

/// The outcome for a page with these entries.
tests::StampOutcome outcomeOfPage(const std::string &entries)
{
    PdfBuilder builder;
    builder.addPage(entries);
    return outcomeOf(builder.file());
}

} // namespace

TEST(HostileStructure, JunkBeforeAndAfterAFileIsPassedOver)
{
    for (const std::size_t length : {1U, 700U, 1500U}) {
        EXPECT_EQ(outcomeOf(std::string(length, 'x') + '\n' + ordinaryFile()).pages, 1) << length;
    }
    EXPECT_EQ(outcomeOf(ordinaryFile() + std::string(5000, '\0')).pages, 1);
    EXPECT_EQ(outcomeOf(ordinaryFile() + std::string(5000, 'x')).pages, 1);
}

TEST(HostileStructure, AnEmptyFileIsUnreadable)
{
    EXPECT_EQ(outcomeOf("").problem, SourceProblem::unreadable);
}

TEST(HostileStructure, OffsetsBeyondTwoAndFourGigabytesAreFollowed)
{
    for (const std::uint64_t gigabytes : {3U, 5U}) {
        const TemporaryFolder folder;
        std::ofstream file(folder / "a.pdf", std::ios::binary);
        file << "%PDF-1.7\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n";
        file.seekp(static_cast<std::streamoff>(gigabytes << 30U)); // A hole, which takes no disk space.
        std::string table = "xref\n0 4\n0000000000 65535 f \n0000000009 00000 n \n";
        const auto add = [&](const std::string &object) {
            const std::string place = std::to_string(file.tellp());
            table += std::string(10 - place.size(), '0') + place + " 00000 n \n";
            file << object << "\nendobj\n";
        };
        add("2 0 obj\n<</Type/Pages/Kids[3 0 R]/Count 1>>");
        add("3 0 obj\n<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]>>");
        const auto end = file.tellp();
        file << table << "trailer\n<</Size 4/Root 1 0 R>>\nstartxref\n" << end << "\n%%EOF\n";
        file.close();
        ASSERT_TRUE(file);
        EXPECT_EQ(tests::outcomeOfFile(folder / "a.pdf").pages, 1) << gigabytes;
    }
}

TEST(HostileStructure, CrossReferencesThatLoopOrLieAreRepaired)
{
    const std::string whole = ordinaryFile();
    const std::string table = whole.substr(whole.rfind("startxref\n") + 10);
    const std::string place = table.substr(0, table.find('\n'));
    const auto with = [&whole](const std::string &from, const std::string &to) {
        std::string file = whole;
        file.replace(file.rfind(from), from.size(), to);
        return file;
    };
    EXPECT_EQ(outcomeOf(with("/Root", "/Prev " + place + "/Root")).pages, 1);
    EXPECT_EQ(outcomeOf(with("/Root", "/XRefStm " + place + "/Root")).pages, 1);
    EXPECT_EQ(outcomeOf(with("xref\n0 ", "xref\n0 999999999")).pages, 1);
    EXPECT_EQ(outcomeOf(with("startxref\n", "startxref\n999999999")).pages, 1);
    // The parser does not repair numbers that are out of range on this platform.
    EXPECT_TRUE(outcomeOf(with("startxref\n", "startxref\n99999999999999999999")).isRefused());
    EXPECT_EQ(outcomeOf(with("/Size ", "/Size -")).pages, 1);
}

TEST(HostileStructure, LengthsThatLieAreRepaired)
{
    for (const char *length : {"0", "7", "999999999", "-1", "(a)", "99999999999999999999", "null"}) {
        PdfBuilder builder;
        const int content =
            builder.add("<</Length " + std::string(length) + ">>stream\n0 0 9 9 re f\nendstream");
        builder.addPage(letter + "/Contents[" + reference(content) + ' ' + reference(content) + "]");
        EXPECT_EQ(outcomeOf(builder.file()).pages, 1) << length;
    }
}

TEST(HostileStructure, KidsOfAnyKindGiveAnAnswer)
{
    for (const char *tree :
         {"<</Type/Pages/Kids[PAGE 7 (a) /N null [1] <<>> 99999 0 R]/Count 3>>", "<</Type/Pages/Kids PAGE>>",
          "<</Type/Pages/Kids 7>>", "<</Type/Pages>>", "[PAGE]", "PAGE", "7", "null",
          "<</Type/Pages/Kids[[PAGE]]>>", "<</Type/Pages/Kids[<</Type/Pages/Kids[PAGE]>>]>>"}) {
        const tests::StampOutcome outcome = outcomeOf(withTree(tree));
        EXPECT_TRUE(outcome.isRefused() || outcome.pages >= 1) << tree;
    }
}

TEST(HostileStructure, ParentsInACircleAreNotFollowed)
{
    PdfBuilder builder;
    const int one = builder.reserve();
    const int two = builder.add("<</Type/Pages/Parent " + reference(one) + ">>");
    builder.set(one, "<</Type/Pages/Parent " + reference(two) + ">>");
    const int page = builder.add("<</Type/Page/Parent " + reference(one) + ">>");
    builder.addToCatalog("/Pages " +
                         reference(builder.add("<</Type/Pages/Kids[" + reference(page) + "]/Count 1>>")));
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileStructure, TurnsUnitsAndBoxesOfAnyKindGiveAPage)
{
    for (const char *entry :
         {"/Rotate 90.5", "/Rotate 1e30", "/Rotate 99999999999999999999", "/Rotate[90]", "/UserUnit 0",
          "/UserUnit -3", "/UserUnit 1e38", "/UserUnit nan", "/UserUnit(a)", "/UserUnit 0.000001",
          "/CropBox[1000 1000 1200 1300]", "/CropBox[nan 0 1 1]", "/CropBox[0 0 1e38 1e38]",
          "/CropBox[0 0 .00001 .00001]"}) {
        EXPECT_EQ(outcomeOfPage(letter + entry).pages, 1) << entry;
    }
}

TEST(HostileStructure, ContentsOfAnyKindGiveAPage)
{
    PdfBuilder builder;
    const std::string half = reference(builder.addStream("", "BT /F 12 Tf 72 7"));
    const std::string rest = reference(builder.addStream("", "00 Td (text) Tj ET"));
    const std::string both = reference(builder.add("[" + half + ' ' + rest + "]"));
    const int loop = builder.reserve();
    builder.set(loop, "[" + reference(loop) + ' ' + half + "]");
    for (const std::string &contents :
         {std::string("null"), both, "[[" + half + "]]", "[" + both + ' ' + half + "]", reference(loop),
          std::string("7"), std::string("[99999 0 R null 7]"), std::string("<<>>"),
          std::string("99999 0 R")}) {
        builder.addPage(letter + "/Contents " + contents);
    }
    EXPECT_EQ(outcomeOf(builder.file()).pages, 9);
}

TEST(HostileStructure, ResourcesOfAnyKindGiveAPage)
{
    PdfBuilder builder;
    const int content = builder.addStream("", "BT /F 12 Tf (text) Tj ET /X Do /G gs");
    for (const char *resources :
         {"", "/Resources 7", "/Resources null", "/Resources[1]", "/Resources 99999 0 R",
          "/Resources<</Font 7/XObject[]/ExtGState(a)/ColorSpace null/Properties/N>>"}) {
        builder.addPage(letter + resources + "/Contents " + reference(content));
    }
    EXPECT_EQ(outcomeOf(builder.file()).pages, 6);
}

TEST(HostileStructure, AFontWhoseGlyphsAreSetInItselfIsCopied)
{
    PdfBuilder builder;
    const int font = builder.reserve();
    const int glyph = builder.addStream("", "1000 0 0 0 750 750 d1 BT /F 1 Tf (a) Tj ET");
    const std::string resources = "/Resources<</Font<</F " + reference(font) + ">>>>";
    builder.set(font, "<</Type/Font/Subtype/Type3/FontBBox[0 0 750 750]/FontMatrix[.001 0 0 .001 0 0]"
                      "/CharProcs<</a " +
                          reference(glyph) +
                          ">>/Encoding<</Differences[97/a]>>/FirstChar 97/LastChar 97/Widths[1000]" +
                          resources + ">>");
    builder.addPage(letter + resources + "/Contents " +
                    reference(builder.addStream("", "BT /F 12 Tf 20 20 Td (a) Tj ET")));
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileStructure, LayersThatDependOnLayersWithoutEndGiveAPage)
{
    PdfBuilder builder;
    const std::string layer = reference(builder.add("<</Type/OCG/Name(a)>>"));
    int expression = builder.add("[/Not " + layer + "]");
    for (int level = 0; level < 20'000; ++level) {
        expression = builder.add("[/And " + reference(expression) + ' ' + reference(expression) + "]");
    }
    const int loop = builder.reserve();
    builder.set(loop, "<</Type/OCMD/OCGs " + reference(loop) + "/VE[/And " + reference(loop) + "]>>");
    const int membership = builder.add("<</Type/OCMD/VE " + reference(expression) + ">>");
    const int form =
        builder.addStream("/Type/XObject/Subtype/Form/BBox[0 0 9 9]/OC " + reference(loop), "0 0 9 9 re f");
    std::string annotations;
    for (const int condition : {membership, loop}) {
        annotations += "<</Type/Annot/Subtype/Stamp/Rect[0 0 9 9]/OC " + reference(condition) + "/AP<</N " +
                       reference(form) + ">>>>";
    }
    builder.addPage(letter + "/Annots[" + annotations + "]");
    builder.addToCatalog("/OCProperties<</OCGs[" + layer + ' ' + reference(loop) + "]/D<</OFF[" + layer +
                         "]>>>>");
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileStructure, AppearancesAndFieldsThatContainThemselvesGiveAPage)
{
    PdfBuilder builder;
    const int form = builder.reserve();
    builder.set(form, "<</Type/XObject/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</X " +
                          reference(form) + ">>>>/Length 5>>stream\n/X Do\nendstream");
    const int states = builder.reserve();
    builder.set(states, "<</N " + reference(states) + "/D " + reference(states) + ">>");
    const int field = builder.reserve();
    const int kid = builder.add("<</Type/Annot/Subtype/Widget/FT/Tx/V(v)/Rect[0 0 50 50]/Parent " +
                                reference(field) + "/Kids[" + reference(field) + "]>>");
    builder.set(field, "<</T(a)/Parent " + reference(kid) + "/Kids[" + reference(kid) + ' ' +
                           reference(field) + "]>>");
    const std::string stamp = "<</Type/Annot/Subtype/Stamp/Rect[0 0 9 9]";
    builder.addPage(letter + "/Annots[" + stamp + "/AP<</N " + reference(form) + ">>>>" + stamp + "/AP " +
                    reference(states) + ">>" + stamp + ">>" + reference(kid) + ' ' + reference(field) + "]");
    builder.addToCatalog("/AcroForm<</NeedAppearances true/Fields[" + reference(field) + "]>>");
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileStructure, AnImageThatClaimsToBeEndlessIsCopiedAsItIs)
{
    PdfBuilder builder;
    const int image =
        builder.addStream("/Type/XObject/Subtype/Image/Width 4294967295/Height 4294967295"
                          "/BitsPerComponent 1/ColorSpace/DeviceGray/Filter/JBIG2Decode",
                          std::string("\0\0\0\0\x30\0\1\0\0\0\x13\xff\xff\xff\xff\xff\xff\xff\xff", 19));
    builder.addPage(letter + "/Resources<</XObject<</I " + reference(image) + ">>>>/Contents " +
                    reference(builder.addStream("", "q 612 0 0 792 0 0 cm /I Do Q")));
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

} // namespace tallyfold
