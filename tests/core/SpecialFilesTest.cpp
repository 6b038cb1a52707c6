#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "tests/support/Picture.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <string>

// Unusual but harmless files that other tools are known to handle wrongly.

namespace tallyfold {

namespace fs = std::filesystem;
using tests::PdfBuilder;
using tests::Picture;
using tests::reference;
using tests::TemporaryFolder;

namespace {

const std::string letter = "/MediaBox[0 0 612 792]";

/// The stamped copy of a file with these bytes, in `folder`.
fs::path stamped(const TemporaryFolder &folder, const std::string &bytes, const StampSettings &settings = {})
{
    tests::writeFile(folder / "a.pdf", bytes);
    const SourceFile source = classify(folder / "a.pdf");
    EXPECT_EQ(source.problem, std::nullopt);
    const ProductionPlan plan({source}, settings);
    Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
    EXPECT_EQ(tests::soundPages(folder / "copy.pdf"), source.pageCount);
    return folder / "copy.pdf";
}

/// All objects of a file as text.
std::string objectsOf(const fs::path &file)
{
    return tests::runTool({"qpdf", "--qdf", "--object-streams=disable", file, "-"}).output;
}

/// The positions of the words of a page, from the left and from the top.
std::pair<double, double> placeOf(const fs::path &file, const std::string &word, int page)
{
    const std::string number = std::to_string(page);
    const std::string boxes =
        tests::runTool({"pdftotext", "-bbox", "-f", number, "-l", number, file, "-"}).output;
    const std::size_t end = boxes.find(">" + word + "<");
    const std::size_t start = boxes.rfind("<word", end);
    if (end == std::string::npos || start == std::string::npos) {
        ADD_FAILURE() << boxes;
        return {};
    }
    const auto value = [&](const char *name) {
        return std::stod(boxes.substr(boxes.find(name, start) + std::string(name).size()));
    };
    return {value("xMax=\""), value("yMax=\"")};
}

} // namespace

TEST(SpecialFiles, TheStampLiesAboveWhateverCoversThePage)
{
    PdfBuilder builder;
    const int scan = builder.addStream(
        "/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "\xff");
    const std::string note = "<</Type/Annot/Subtype/Square/Rect[0 0 612 792]/IC[1 1 1]/C[1 1 1]>>";
    builder.addPage(letter + "/Resources<</XObject<</I " + reference(scan) + ">>>>/Contents " +
                    reference(builder.addStream("", "q 612 0 0 792 0 0 cm /I Do Q")));
    builder.addPage(letter + "/Contents " + reference(builder.addStream("", "1 g 0 0 612 792 re f")));
    builder.addPage(letter + "/Annots[" + note + "]");
    StampSettings settings;
    settings.background = false;
    const TemporaryFolder folder;
    const fs::path copy = stamped(folder, builder.file(), settings);
    for (const Picture::Tool tool : {Picture::Tool::poppler, Picture::Tool::mupdf}) {
        for (int page = 1; page <= 3; ++page) {
            EXPECT_TRUE(Picture::of(copy, tool, page).hasInk(400, 0, 612, 60)) << page;
        }
    }
}

TEST(SpecialFiles, AnObjectThatIsTwoPagesHasANumberOnEach)
{
    PdfBuilder builder;
    const std::string page = reference(builder.add("<</Type/Page" + letter + ">>"));
    builder.addToCatalog("/Pages " +
                         reference(builder.add("<</Type/Pages/Kids[" + page + ' ' + page + "]/Count 2>>")));
    const TemporaryFolder folder;
    const fs::path copy = stamped(folder, builder.file());
    for (const int number : {1, 2}) {
        const std::string text = tests::textOfPage(copy, number);
        EXPECT_NE(text.find("ABC00000" + std::to_string(number)), std::string::npos) << text;
        EXPECT_EQ(text.find("ABC00000" + std::to_string(3 - number)), std::string::npos) << text;
    }
}

TEST(SpecialFiles, EveryPageIsStampedInItsOwnCornerWhateverItsSizeAndPlace)
{
    struct Page {
        const char *entries;
        double width;
        double height;
    };
    const std::vector<Page> pages{
        {"/MediaBox[0 0 612 792]", 612, 792},
        {"/MediaBox[0 0 792 612]", 792, 612},
        {"/MediaBox[0 0 2384 3370]", 2384, 3370},
        {"/MediaBox[-1685 -1192 1685 1192]", 3370, 2384},
        {"/MediaBox[100 200 712 992]/CropBox[150 250 650 900]/Rotate 90", 650, 500}};
    PdfBuilder builder;
    for (const Page &page : pages) {
        builder.addPage(page.entries);
    }
    const TemporaryFolder folder;
    const fs::path copy = stamped(folder, builder.file());
    const auto [left, top] = placeOf(copy, "ABC000001", 1);
    for (int number = 2; number <= 5; ++number) {
        const Page &page = pages[static_cast<std::size_t>(number - 1)];
        const auto [right, bottom] = placeOf(copy, "ABC00000" + std::to_string(number), number);
        EXPECT_NEAR(page.width - right, 612 - left, 0.1) << page.entries;
        EXPECT_NEAR(page.height - bottom, 792 - top, 0.1) << page.entries;
    }
}

TEST(SpecialFiles, ASignedFileKeepsItsLookInTheCopyAndItsSignatureInTheOriginal)
{
    PdfBuilder builder;
    const int look =
        builder.addStream("/Type/XObject/Subtype/Form/BBox[0 0 100 20]", "1 0 0 rg 0 0 100 20 re f");
    const int signature = builder.add("<</Type/Sig/Filter/Adobe.PPKLite/SubFilter/adbe.pkcs7.detached"
                                      "/ByteRange[0 10 20 30]/Contents<00>>>");
    builder.addPage(letter +
                    "/Annots[<</Type/Annot/Subtype/Widget/FT/Sig/T(s)/F 132/Rect[100 100 200 120]/V " +
                    reference(signature) + "/AP<</N " + reference(look) + ">>>>]");
    builder.addToCatalog("/AcroForm<</SigFlags 3/Fields[]>>/Perms<</DocMDP " + reference(signature) + ">>");
    const TemporaryFolder folder;
    const std::string bytes = builder.file();
    const fs::path copy = stamped(folder, bytes);
    EXPECT_EQ(tests::readFile(folder / "a.pdf"), bytes);
    const std::string objects = objectsOf(copy);
    for (const char *word : {"ByteRange", "/Sig", "/AcroForm", "/Perms", "/DocMDP"}) {
        EXPECT_EQ(objects.find(word), std::string::npos) << word;
    }
    EXPECT_TRUE(Picture::of(copy, Picture::Tool::poppler).hasInk(100, 100, 200, 120));
}

TEST(SpecialFiles, OfAPortfolioTheCoverIsStampedAndNoAttachmentIsGivenAway)
{
    PdfBuilder builder;
    const int attached = builder.addStream("/Type/EmbeddedFile", "what the letter says");
    const int file = builder.add("<</Type/Filespec/F(letter.doc)/EF<</F " + reference(attached) + ">>>>");
    builder.addPage(letter + "/Annots[<</Type/Annot/Subtype/FileAttachment/Rect[9 9 30 30]/FS " +
                    reference(file) + ">>]");
    builder.addToCatalog("/Collection<</View/D>>/AF[" + reference(file) +
                         "]/Names<</EmbeddedFiles<</Names[(letter.doc)" + reference(file) + "]>>>>");
    const TemporaryFolder folder;
    const std::string objects = objectsOf(stamped(folder, builder.file()));
    for (const char *word : {"what the letter says", "letter.doc", "EmbeddedFile", "Collection"}) {
        EXPECT_EQ(objects.find(word), std::string::npos) << word;
    }
}

TEST(SpecialFiles, OfAFormInXmlThePageThatEveryViewerShowsIsStamped)
{
    PdfBuilder builder;
    const int font = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    builder.addPage(letter + "/Resources<</Font<</F " + reference(font) + ">>>>/Contents " +
                    reference(builder.addStream("", "BT /F 12 Tf 72 700 Td (Please wait...) Tj ET")));
    builder.addToCatalog("/NeedsRendering true/AcroForm<</Fields[]/XFA[(template)" +
                         reference(builder.addStream("", "<xdp/>")) + "]>>");
    const TemporaryFolder folder;
    const fs::path copy = stamped(folder, builder.file());
    const std::string text = tests::textOfPage(copy, 1);
    EXPECT_NE(text.find("Please wait..."), std::string::npos);
    EXPECT_NE(text.find("ABC000001"), std::string::npos);
    EXPECT_EQ(objectsOf(copy).find("xdp"), std::string::npos);
}

TEST(SpecialFiles, WhatPagesShareIsInTheCopyOnce)
{
    PdfBuilder builder;
    std::string noise;
    for (unsigned state = 1; noise.size() < 200'000; state = state * 1664525U + 1013904223U) {
        noise.push_back(static_cast<char>(state >> 24U));
    }
    const int image = builder.addStream("/Type/XObject/Subtype/Image/Width 200/Height 1000/BitsPerComponent 8"
                                        "/ColorSpace/DeviceGray",
                                        noise);
    builder.inherit("/Resources<</XObject<</I " + reference(image) + ">>>>");
    for (int page = 0; page < 50; ++page) {
        builder.addPage(letter + "/Contents " +
                        reference(builder.addStream("", "q 200 0 0 200 0 0 cm /I Do Q")));
    }
    const TemporaryFolder folder;
    const fs::path copy = stamped(folder, builder.file());
    EXPECT_LT(fs::file_size(copy), fs::file_size(folder / "a.pdf") + 50'000);
}

TEST(SpecialFiles, WhatPagesInheritAndShareIsDrawnOnEachOfThem)
{
    PdfBuilder builder;
    // The names are those that a copy uses for its own resources.
    const std::string fonts =
        reference(builder.add("<</F0 7 0 R/F1<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>"));
    const std::string image = reference(builder.addStream(
        "/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceRGB",
        std::string("\xff\0\0", 3)));
    const std::string gray = reference(builder.add("<</Type/ExtGState/ca 1>>"));
    builder.inherit("/Resources<</Font " + fonts + "/XObject<</P " + image + "/A0 " + image +
                    ">>/ExtGState<</G " + gray + ">>>>");
    const std::string content =
        reference(builder.addStream("", "q /G gs 50 0 0 50 100 500 cm /P Do Q q 50 0 0 50 300 500 cm /A0 Do "
                                        "Q BT /F1 12 Tf 72 700 Td (shared) Tj ET"));
    const std::string contents = reference(builder.add("[" + content + "]"));
    for (int page = 0; page < 3; ++page) {
        builder.addPage(letter + "/Contents " + contents);
    }
    const TemporaryFolder folder;
    const fs::path copy = stamped(folder, builder.file());
    for (int page = 1; page <= 3; ++page) {
        const std::string text = tests::textOfPage(copy, page);
        EXPECT_NE(text.find("shared"), std::string::npos) << text;
        EXPECT_NE(text.find("ABC00000" + std::to_string(page)), std::string::npos) << text;
        for (const Picture::Tool tool : {Picture::Tool::poppler, Picture::Tool::mupdf}) {
            const Picture picture = Picture::of(copy, tool, page);
            EXPECT_TRUE(picture.at(125, 525).isNear({255, 0, 0})) << page;
            EXPECT_TRUE(picture.at(325, 525).isNear({255, 0, 0})) << page;
        }
    }
}

} // namespace tallyfold
