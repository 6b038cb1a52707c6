#include "core/Production.h"
#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "pdf/syntax/Deflater.h"
#include "tests/core/StampOutcome.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <string>

// Streams with hostile data, dictionaries and references.

namespace tallyfold {

namespace fs = std::filesystem;
using tests::outcomeOf;
using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;

namespace {

const std::string letter = "/MediaBox[0 0 612 792]";

/// Codes of `width` bits, most significant bit first.
class Codes {
public:
    void add(unsigned code, int width)
    {
        for (int bit = width - 1; bit >= 0; --bit) {
            m_byte = m_byte << 1U | (code >> static_cast<unsigned>(bit) & 1U);
            if (++m_bits == 8) {
                m_bytes.push_back(static_cast<char>(m_byte));
                m_byte = 0;
                m_bits = 0;
            }
        }
    }

    [[nodiscard]] std::string bytes()
    {
        while (m_bits != 0) {
            add(0, 1);
        }
        return m_bytes;
    }

private:
    std::string m_bytes;
    unsigned m_byte = 0;
    int m_bits = 0;
};

/// LZW data of spaces at maximum compression: each code stands for one space more than the one before.
std::string packedByLzw(int tables)
{
    constexpr unsigned clear = 256;
    constexpr unsigned last = 4093;
    Codes codes;
    for (int table = 0; table < tables; ++table) {
        codes.add(clear, table == 0 ? 9 : 12);
        codes.add(' ', 9);
        for (unsigned code = 258; code <= last; ++code) {
            codes.add(code, code < 511 ? 9 : code < 1023 ? 10 : code < 2047 ? 11 : 12);
        }
    }
    codes.add(257, 12);
    return codes.bytes();
}

/// Run lengths of spaces, which go from one byte to 64.
std::string packedByRuns(std::size_t runs)
{
    std::string bytes;
    for (std::size_t run = 0; run < runs; ++run) {
        bytes.append("\x81 ", 2);
    }
    return bytes + '\x80';
}

std::string deflated(std::size_t size)
{
    pdf::Deflater deflater;
    return std::string(deflater.compress(std::string(size, ' ')));
}

/// The outcome for a page whose content consists of several streams with these entries, which forces
/// decoding.
tests::StampOutcome outcomeOfContents(const std::string &entries, const std::string &data)
{
    PdfBuilder builder;
    const std::string content = reference(builder.addStream(entries, data));
    builder.addPage(letter + "/Contents[" + content + ' ' + content + "]");
    return outcomeOf(builder.file());
}

/// Whether no copy is made of such a page. Skips the search for an earlier number, which would take long.
bool isTooMuch(const std::string &entries, const std::string &data)
{
    PdfBuilder builder;
    const std::string content = reference(builder.addStream(entries, data));
    builder.addPage(letter + "/Contents[" + content + ' ' + content + "]");
    const TemporaryFolder folder;
    tests::writeHostile(folder / "a.pdf", builder.file());
    const SourceFile source = classify(folder / "a.pdf", EarlierNumbers::leaveOut);
    EXPECT_EQ(source.pageCount, 1);
    const ProductionPlan plan({source}, {});
    try {
        Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
    } catch (const StampError &error) {
        return error == StampError::unreadable(source.name);
    }
    return false;
}

/// The copy of a file with these bytes, uncompressed, as text.
std::string copyOf(const std::string &bytes)
{
    const TemporaryFolder folder;
    tests::writeHostile(folder / "a.pdf", bytes);
    const ProductionPlan plan({classify(folder / "a.pdf")}, {});
    Stamper::write(plan.files.front(), plan.settings, folder / "copy.pdf", {});
    return tests::runTool({"qpdf", "--qdf", "--object-streams=disable", folder / "copy.pdf", "-"}).output;
}

} // namespace

TEST(HostileData, NoFilterExpandsWithoutEnd)
{
    // Each is small but decodes to more than a page may have.
    EXPECT_TRUE(isTooMuch("/Filter/LZWDecode", packedByLzw(40)));
    EXPECT_TRUE(isTooMuch("/Filter/RunLengthDecode", packedByRuns(3'000'000)));
    pdf::Deflater deflater;
    const std::string twice(deflater.compress(deflated(300'000'000)));
    EXPECT_TRUE(isTooMuch("/Filter[/FlateDecode/FlateDecode]", twice));
}

TEST(HostileData, OneThatExpandsWithoutEndTakesNoNeighbourWithIt)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "out");
    PdfBuilder builder;
    const std::string content = reference(builder.addStream("/Filter/FlateDecode", deflated(200'000'000)));
    builder.addPage(letter + "/Contents[" + content + ' ' + content + "]");
    tests::writeSample(folder / "a.pdf", 2);
    tests::writeHostile(folder / "b.pdf", builder.file());
    tests::writeSample(folder / "c.pdf", 2);
    std::vector<SourceFile> sources;
    for (const char *name : {"a.pdf", "b.pdf", "c.pdf"}) {
        sources.push_back(classify(folder / name, EarlierNumbers::leaveOut));
    }
    const ProductionResult result = Production::write(ProductionPlan(sources, {}), folder / "out", {}, {});
    EXPECT_EQ(result.failures,
              (QMap<QString, StampError>{
                  {QStringLiteral("b.pdf"), StampError::unreadable(QStringLiteral("b.pdf"))}}));
    EXPECT_EQ(result.written, (std::vector<fs::path>{folder / "out" / "a.pdf", folder / "out" / "c.pdf"}));
    EXPECT_EQ(tests::soundPages(folder / "out" / "c.pdf"), 2);
    EXPECT_NE(tests::textOfPage(folder / "out" / "c.pdf", 1).find("ABC000004"), std::string::npos);
}

TEST(HostileData, WhatLittleOfThoseFiltersHoldsIsUnpacked)
{
    EXPECT_EQ(outcomeOfContents("/Filter/LZWDecode", packedByLzw(1)).pages, 1);
    EXPECT_EQ(outcomeOfContents("/Filter/RunLengthDecode", packedByRuns(10)).pages, 1);
}

TEST(HostileData, RowsOfAnyLengthGiveAPageOrAreRefused)
{
    for (const char *parameters :
         {"/Predictor 12/Columns 2147483647", "/Predictor 12/Columns 99999999999999999999",
          "/Predictor 12/Columns -1", "/Predictor 12/Columns 0",
          "/Predictor 15/Columns 1000000/Colors 1000000",
          "/Predictor 2/Columns 2147483647/Colors 2147483647/BitsPerComponent 2147483647",
          "/Predictor 2/Columns 4/BitsPerComponent 0", "/Predictor 77", "/Predictor -1", "/EarlyChange 7"}) {
        for (const char *filter : {"/Filter/FlateDecode", "/Filter/LZWDecode"}) {
            const std::string data = filter[8] == 'L' ? packedByLzw(1) : deflated(5000);
            const tests::StampOutcome outcome =
                outcomeOfContents(std::string(filter) + "/DecodeParms<<" + parameters + ">>", data);
            EXPECT_TRUE(outcome.isRefused() || outcome.pages == 1) << filter << parameters;
        }
    }
}

TEST(HostileData, FontsOfAnyKindAreReadCopiedAndDrawn)
{
    PdfBuilder builder;
    const std::string content = reference(builder.addStream("", "BT /F 12 Tf 72 700 Td (text) Tj ET"));
    int pages = 0;
    for (const char *data :
         {"", "no font", "%!PS-AdobeFont-1.0: A\n/CharStrings 99999999 dict dup begin /a 99999999 RD ",
          "\1\0\4\4\0\1\1\1", "OTTO\xff\xff\xff\xff", "true\0\1\0\0"}) {
        for (const char *kind : {"/FontFile", "/FontFile2", "/FontFile3"}) {
            const std::string file = reference(builder.addStream("/Subtype/Type1C", data));
            const std::string descriptor = reference(builder.add("<</Type/FontDescriptor/FontName/A/Flags 4" +
                                                                 std::string(kind) + ' ' + file + ">>"));
            for (const char *font : {"Type1", "TrueType"}) {
                builder.addPage(letter + "/Resources<</Font<</F<</Type/Font/Subtype/" + font +
                                "/BaseFont/A/FontDescriptor " + descriptor + ">>>>>>/Contents " + content);
                ++pages;
            }
        }
    }
    builder.addPage(letter +
                    "/Resources<</Font<</F<</Type/Font/Subtype/Type0/DescendantFonts[7]>>>>>>"
                    "/Contents " +
                    content);
    const TemporaryFolder folder;
    tests::writeHostile(folder / "a.pdf", builder.file());
    EXPECT_EQ(tests::outcomeOfFile(folder / "a.pdf").pages, pages + 1);
    const ProductionPlan plan({classify(folder / "a.pdf")}, {});
    EXPECT_EQ(Stamper::previewImages(plan.files.front(), {}, 3, 100).size(), 3U);
}

TEST(HostileData, PicturesOfAnyKindAreCopiedAsTheyAre)
{
    PdfBuilder builder;
    const std::string endless = std::string(100, '\xff') + std::string(100, '\0');
    for (const std::string filter : {"JBIG2Decode", "JPXDecode", "CCITTFaxDecode", "DCTDecode", "Nothing"}) {
        const int image =
            builder.addStream("/Type/XObject/Subtype/Image/Width 2147483647/Height 2147483647"
                              "/BitsPerComponent 1/ColorSpace/DeviceGray/Filter/" +
                                  filter + "/DecodeParms<</K -1/Columns 2147483647/Rows 2147483647>>",
                              endless);
        builder.addPage(letter + "/Resources<</XObject<</I " + reference(image) + ">>>>/Contents " +
                        reference(builder.addStream("", "q 612 0 0 792 0 0 cm /I Do Q")));
    }
    const std::string copy = copyOf(builder.file());
    std::size_t count = 0;
    for (std::size_t place = copy.find(endless); place != std::string::npos;
         place = copy.find(endless, place + 1)) {
        ++count;
    }
    EXPECT_EQ(count, 5U);
}

TEST(HostileData, NothingOutsideOfTheFileIsReferredTo)
{
    PdfBuilder builder;
    const std::string outside = "/F<</Type/Filespec/FS/URL/F(http://outside.example/)>>/FFilter/FlateDecode"
                                "/FDecodeParms<</Predictor 1>>";
    const std::string image =
        reference(builder.addStream("/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8"
                                    "/ColorSpace/DeviceGray/OPI<</2.0<</F(outside.tif)>>>>/Alternates[]" +
                                        outside,
                                    "x"));
    const std::string form = reference(builder.addStream(
        "/Type/XObject/Subtype/Form/BBox[0 0 9 9]/Ref<</F(outside.pdf)/Page 0>>" + outside, "0 0 9 9 re f"));
    const std::string content = reference(builder.addStream(outside, "/I Do /F Do"));
    std::string annotations;
    for (const char *action :
         {"/S/SubmitForm/F(http://outside.example/)", "/S/GoToR/F(outside.pdf)", "/S/URI/URI(outside)",
          "/S/ImportData/F(outside.fdf)", "/S/Rendition/JS(outside)", "/S/GoToE/F(outside.pdf)"}) {
        annotations += std::string("<</Type/Annot/Subtype/Widget/FT/Btn/Ff 65536/T(b)/Rect[0 0 9 9]/A<<") +
                       action + ">>/AA<</U<<" + action + ">>>>/AP<</N " + form + ">>>>";
    }
    for (const char *kind : {"RichMedia", "Screen", "Movie", "Sound", "3D"}) {
        annotations += std::string("<</Type/Annot/Subtype/") + kind +
                       "/Rect[0 0 9 9]/RichMediaContent<</Assets(outside)>>/Movie<</F(outside.avi)>>"
                       "/A<</S/Rendition/JS(outside)>>/AP<</N " +
                       form + ">>>>";
    }
    builder.addPage(letter + "/Resources<</XObject<</I " + image + "/F " + form + ">>>>/Contents " + content +
                    "/Annots[" + annotations + "]/Dur 1/Trans<<>>/PresSteps<</NA<</S/URI/URI(outside)>>>>");
    const std::string copy = copyOf(builder.file());
    EXPECT_NE(copy.find("/Type /Page"), std::string::npos);
    for (const char *word : {"outside", "FFilter", "/URL", "/OPI", "/Ref ", "/Alternates", "/AA", "/Trans"}) {
        EXPECT_EQ(copy.find(word), std::string::npos) << word;
    }
}

} // namespace tallyfold
