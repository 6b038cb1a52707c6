#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "pdf/syntax/Deflater.h"
#include "tests/core/StampOutcome.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <random>

namespace tallyfold {

namespace fs = std::filesystem;
using tests::outcomeOf;
using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;
using tests::writeHostile;

namespace {

/// A page of letter size with a line of text, in the page tree of the catalog.
std::string ordinaryFile()
{
    PdfBuilder builder;
    const int content = builder.addStream("", "BT /F 12 Tf 72 700 Td (text) Tj ET");
    builder.addPage("/MediaBox[0 0 612 792]/Contents " + reference(content));
    return builder.file();
}

} // namespace

TEST(HostileFiles, ATruncatedFileIsRepairedOrRefused)
{
    const std::string whole = ordinaryFile();
    for (std::size_t size = 0; size < whole.size(); size += 7) {
        const tests::StampOutcome outcome = outcomeOf(whole.substr(0, size));
        EXPECT_TRUE(outcome.isRefused() || outcome.pages == 1) << size;
    }
}

TEST(HostileFiles, GarbageIsRefused)
{
    std::mt19937 random(7);
    for (int file = 0; file < 20; ++file) {
        std::string bytes = file % 2 == 0 ? "%PDF-1.7\n" : "";
        for (int byte = 0; byte < 3000; ++byte) {
            bytes.push_back(static_cast<char>(random() & 0xffU));
        }
        EXPECT_EQ(outcomeOf(bytes).problem, SourceProblem::unreadable);
    }
}

TEST(HostileFiles, DamagedBytesAreRepairedOrRefused)
{
    std::mt19937 random(11);
    const std::string whole = ordinaryFile();
    for (int file = 0; file < 100; ++file) {
        std::string bytes = whole;
        for (int damage = 0; damage < 5; ++damage) {
            bytes[random() % bytes.size()] = static_cast<char>(random() & 0xffU);
        }
        (void)outcomeOf(bytes); // Any definite outcome is fine.
    }
}

TEST(HostileFiles, ATreeThatLoopsEnds)
{
    PdfBuilder builder;
    const int tree = builder.reserve();
    const int page = builder.add("<</Type/Page/MediaBox[0 0 100 100]/Parent " + reference(tree) + ">>");
    builder.set(tree, "<</Type/Pages/Count 3/Kids[" + reference(page) + ' ' + reference(tree) + ' ' +
                          reference(page) + "]/Parent " + reference(tree) + ">>");
    builder.addToCatalog("/Pages " + reference(tree));
    EXPECT_EQ(outcomeOf(builder.file()).pages, 2); // The page that is listed twice, without the cycle.
}

TEST(HostileFiles, ATreeAsDeepAsTheFileIsLongIsWalked)
{
    PdfBuilder builder;
    constexpr int depth = 20'000;
    int kid = builder.add("<</Type/Page/MediaBox[0 0 100 100]>>");
    for (int level = 0; level < depth; ++level) {
        kid = builder.add("<</Type/Pages/Count 1/Kids[" + reference(kid) + "]>>");
    }
    builder.addToCatalog("/Pages " + reference(kid)); // The last of two entries counts.
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileFiles, WhatATreeSaysOfItsSizeIsNotBelieved)
{
    for (const char *count : {"9999999999", "-7", "2147483648", "0.5"}) {
        PdfBuilder builder;
        builder.addPage("/MediaBox[0 0 100 100]");
        std::string file = builder.file();
        const std::size_t place = file.find("/Count 1");
        ASSERT_NE(place, std::string::npos);
        file.replace(place, 8, std::string("/Count ") + count);
        EXPECT_EQ(outcomeOf(file).pages, 1) << count; // The offsets after it are wrong and get repaired.
    }
}

TEST(HostileFiles, ATreeOfManyNodesIsCountedQuickly)
{
    PdfBuilder builder;
    const int page = builder.add("<</Type/Page/MediaBox[0 0 100 100]>>");
    std::string kids;
    constexpr int nodes = 300'000;
    for (int node = 0; node < nodes; ++node) {
        kids += reference(page) + ' ';
    }
    const int tree = builder.add("<</Type/Pages/Count 1/Kids[" + kids + "]>>");
    builder.addToCatalog("/Pages " + reference(tree));
    const TemporaryFolder folder;
    writeHostile(folder / "a.pdf", builder.file());
    const SourceFile source = classify(folder / "a.pdf");
    EXPECT_EQ(source.pageCount, nodes);
}

TEST(HostileFiles, FormsThatDrawThemselvesAreCopiedOnce)
{
    PdfBuilder builder;
    const int form = builder.reserve();
    const std::string resources = "/Resources<</XObject<</X " + reference(form) + ">>>>";
    const int content = builder.addStream("", "/X Do");
    builder.set(form, "<</Type/XObject/Subtype/Form/BBox[0 0 9 9]" + resources +
                          "/Length 5>>stream\n/X Do\nendstream");
    builder.addPage("/MediaBox[0 0 100 100]" + resources + "/Contents " + reference(content));
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileFiles, ResourcesThatContainThemselvesAreCopiedOnce)
{
    PdfBuilder builder;
    const int resources = builder.reserve();
    builder.set(resources,
                "<</XObject<</X " + reference(resources) + ">>/Font " + reference(resources) + ">>");
    builder.addPage("/MediaBox[0 0 100 100]/Resources " + reference(resources));
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileFiles, NestingWithoutEndIsRefusedOrCut)
{
    PdfBuilder builder;
    constexpr std::size_t depth = 20'000;
    const std::string deep = std::string(depth, '[') + std::string(depth, ']');
    builder.addPage("/MediaBox[0 0 100 100]/Resources<</ExtGState<</G " + deep + ">>>>");
    (void)outcomeOf(builder.file());
}

TEST(HostileFiles, StreamsThatExpandWithoutEndDoNotFillTheMemory)
{
    PdfBuilder builder;
    pdf::Deflater deflater;
    const std::string packed(deflater.compress(std::string(200'000'000, ' ')));
    const int content = builder.addStream("/Filter/FlateDecode", packed);
    const std::string twice = reference(content) + ' ' + reference(content);
    builder.addPage("/MediaBox[0 0 100 100]/Contents[" + twice + "]");
    const TemporaryFolder folder;
    writeHostile(folder / "a.pdf", builder.file());
    const PlannedFile file{{QUuid::createUuid(), folder / "a.pdf", QStringLiteral("a.pdf"), 1, {}, {}, {}},
                           {{1, true}},
                           QStringLiteral("a.pdf")};
    try {
        Stamper::write(file, {}, folder / "copy.pdf", {});
        FAIL() << "that much was written";
    } catch (const StampError &error) {
        EXPECT_EQ(error, StampError::unreadable(QStringLiteral("a.pdf")));
    }
}

TEST(HostileFiles, AStreamThatExpandsWithoutEndIsCopiedAsItIs)
{
    PdfBuilder builder;
    pdf::Deflater deflater;
    const std::string packed(deflater.compress(std::string(400'000'000, ' ')));
    const int content = builder.addStream("/Filter/FlateDecode", packed);
    builder.addPage("/MediaBox[0 0 100 100]/Contents " + reference(content));
    const TemporaryFolder folder;
    writeHostile(folder / "a.pdf", builder.file());
    const PlannedFile file{{QUuid::createUuid(), folder / "a.pdf", QStringLiteral("a.pdf"), 1, {}, {}, {}},
                           {{1, true}},
                           QStringLiteral("a.pdf")};
    Stamper::write(file, {}, folder / "copy.pdf", {});
    EXPECT_LT(fs::file_size(folder / "copy.pdf"), packed.size() + 8000);
}

TEST(HostileFiles, AbsurdBoxesGiveAPage)
{
    for (const char *box :
         {"[0 0 0 0]", "[5 5 5 900]", "[612 792 0 0]", "[-1e30 -1e30 1e30 1e30]", "[0 0 1e999 7]",
          "[(a) 0 1 1]", "[]", "7", "[0 0 100]", "[0 0 nan nan]", "[0 0 --5 1.2.3]"}) {
        PdfBuilder builder;
        builder.addPage(std::string("/MediaBox") + box + "/CropBox" + box);
        const tests::StampOutcome outcome = outcomeOf(builder.file());
        EXPECT_TRUE(outcome.isRefused() || outcome.pages == 1) << box;
    }
}

TEST(HostileFiles, ManyAnnotationsAreDrawn)
{
    PdfBuilder builder;
    const int form = builder.addStream("/Type/XObject/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f");
    std::string annotations;
    for (int annotation = 0; annotation < 100'000; ++annotation) {
        annotations += "<</Type/Annot/Subtype/Stamp/Rect[0 0 9 9]/AP<</N " + reference(form) + ">>>>";
    }
    builder.addPage("/MediaBox[0 0 100 100]/Annots[" + annotations + "]");
    EXPECT_EQ(outcomeOf(builder.file()).pages, 1);
}

TEST(HostileFiles, ActiveContentDoesNotGetIntoACopy)
{
    PdfBuilder builder;
    const int script = builder.add("<</S/JavaScript/JS(app.alert\\(1\\))>>");
    builder.addToCatalog("/OpenAction " + reference(script) + "/AA<</WC " + reference(script) + ">>");
    builder.addPage("/MediaBox[0 0 100 100]/AA<</O " + reference(script) +
                    ">>/Annots[<</Type/Annot/Subtype/Link/Rect[0 0 "
                    "9 9]/A<</S/Launch/F(calc.exe)>>>>]");
    const TemporaryFolder folder;
    writeHostile(folder / "a.pdf", builder.file());
    const ProductionPlan plan({classify(folder / "a.pdf")}, {});
    Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
    const std::string copy =
        tests::runTool({"qpdf", "--qdf", "--object-streams=disable", (folder / "copy.pdf").string(), "-"})
            .output;
    for (const char *word : {"JavaScript", "app.alert", "Launch", "calc.exe", "OpenAction", "/AA"}) {
        EXPECT_EQ(copy.find(word), std::string::npos) << word;
    }
}

TEST(HostileFiles, WhatContentLeavesBehindDoesNotMoveTheStamp)
{
    const auto placeOfNumber = [](const std::string &content) {
        PdfBuilder builder;
        const int stream = builder.addStream("", content);
        builder.addPage("/MediaBox[0 0 612 792]/Contents " + reference(stream));
        const TemporaryFolder folder;
        writeHostile(folder / "a.pdf", builder.file());
        const ProductionPlan plan({classify(folder / "a.pdf")}, {});
        Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
        const std::string boxes =
            tests::runTool({"pdftotext", "-bbox", (folder / "copy.pdf").string(), "-"}).output;
        const std::size_t place = boxes.find("<word");
        return place == std::string::npos ? boxes : boxes.substr(place, boxes.find("</word>", place) - place);
    };
    const std::string expected = placeOfNumber("");
    EXPECT_NE(expected.find("ABC000001"), std::string::npos) << expected;
    for (const char *content :
         {"q q q", "Q Q Q Q", "2 0 0 2 50 50 cm", "q -1 0 0 -1 612 792 cm", "0 0 1 1 re W n", "BT /F 12 Tf",
          "1 g 1 G", "7 Tr 3 w [1] 0 d", "/Missing gs /Missing Do", "BI /W 1 /H 1", "( unclosed",
          "/OC /Missing BDC", "/Span BMC", "/Span<</ActualText(x)>>BDC", "EMC EMC", "<< /A [ (", "BX"}) {
        EXPECT_EQ(placeOfNumber(content), expected) << content;
    }
}

} // namespace tallyfold
