#include "pdf/copy/ObjectCopier.h"

#include "tests/support/FlatCopy.h"
#include "tests/support/ParsedCopy.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>

#include <set>
#include <string>

namespace tallyfold {

using tests::flatCopy;
using tests::ParsedCopy;
using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;

namespace {

/// Objects that take the numbers which a copy gives its first ones, so that a number of the source that
/// stands in the copy leads to something else.
void addStrangers(PdfBuilder &builder)
{
    for (int count = 0; count < 20; ++count) {
        builder.add("<</Stranger true>>");
    }
}

/// The file at `path` with everything in it readable.
std::string qdfOf(const std::filesystem::path &path)
{
    return tests::runTool({"qpdf", "--qdf", "--object-streams=disable", path, "-"}).output;
}

} // namespace

TEST(ObjectCopier, IndirectCollectionsStayBehindTheirKeys)
{
    PdfBuilder builder;
    addStrangers(builder);
    const int procedures = builder.add("[/PDF/Text]");
    const int group = builder.add("<</S/Transparency/CS/DeviceRGB>>");
    const int states = builder.add("<</G<</ca 0.5>>>>");
    builder.addPage("/Group " + reference(group) + "/Resources<</ProcSet " + reference(procedures) +
                    "/ExtGState " + reference(states) + ">>");
    ParsedCopy copy(builder.file());
    EXPECT_EQ(copy.page().getKey("/Group").getKey("/CS").getName(), "/DeviceRGB");
    EXPECT_EQ(copy.resources().getKey("/ProcSet").getArrayNItems(), 2);
    EXPECT_EQ(copy.resources().getKey("/ExtGState").getKey("/G").getKey("/ca").unparse(), "0.5");
    EXPECT_EQ(copy.resources().getKeys(), (std::set<std::string>{"/ExtGState", "/ProcSet"}));
}

// PDF 1.7, 7.3.10: any object may be an indirect one, and a reference to it means the object.
class IndirectScalar : public testing::TestWithParam<const char *> {};

TEST_P(IndirectScalar, KeepsItsValueInADictionary)
{
    PdfBuilder builder;
    addStrangers(builder);
    const int value = builder.add(GetParam());
    builder.addPage("/Resources<</ExtGState<</G<</V " + reference(value) + ">>>>>>");
    ParsedCopy copy(builder.file());
    EXPECT_EQ(copy.resources().getKey("/ExtGState").getKey("/G").getKey("/V").unparseResolved(), GetParam());
}

TEST_P(IndirectScalar, KeepsItsValueInAnArray)
{
    PdfBuilder builder;
    addStrangers(builder);
    const int value = builder.add(GetParam());
    builder.addPage("/Resources<</ColorSpace<</C[/Indexed " + reference(value) + "]>>>>");
    ParsedCopy copy(builder.file());
    EXPECT_EQ(copy.resources().getKey("/ColorSpace").getKey("/C").getArrayItem(1).unparseResolved(),
              GetParam());
}

TEST_P(IndirectScalar, KeepsItsValueAsAResource)
{
    PdfBuilder builder;
    addStrangers(builder);
    const int value = builder.add(GetParam());
    builder.addPage("/Resources<</ColorSpace<</C " + reference(value) + ">>>>");
    ParsedCopy copy(builder.file());
    EXPECT_EQ(copy.resources().getKey("/ColorSpace").getKey("/C").unparseResolved(), GetParam());
}

TEST_P(IndirectScalar, KeepsItsValueInTheDictionaryOfAStream)
{
    PdfBuilder builder;
    addStrangers(builder);
    const int value = builder.add(GetParam());
    const int form = builder.addStream("/Subtype/Form/BBox[0 0 9 9]/V " + reference(value), "");
    builder.addPage("/Resources<</XObject<</X " + reference(form) + ">>>>");
    ParsedCopy copy(builder.file());
    EXPECT_EQ(copy.resources().getKey("/XObject").getKey("/X").getDict().getKey("/V").unparseResolved(),
              GetParam());
}

INSTANTIATE_TEST_SUITE_P(ObjectCopier, IndirectScalar,
                         testing::Values("/DeviceRGB", "17", "-1.50", "true", "false", "(a string)", "<80ff>",
                                         "/A#20B"));

// What a dictionary calls a thing and what the content calls it, byte for byte: viewers do not agree on what
// a "#" means that no two digits follow, but they find what is called the same.
class NameOfAResource : public testing::TestWithParam<const char *> {};

TEST_P(NameOfAResource, IsWrittenAsTheContentHasIt)
{
    PdfBuilder builder;
    const int form = builder.addStream("/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f");
    builder.addPage(std::string("/Resources<</XObject<<") + GetParam() + ' ' + reference(form) + ">>>>");
    const TemporaryFolder folder;
    const std::string copy = qdfOf(flatCopy(folder.path(), builder.file()));
    EXPECT_NE(copy.find(std::string(GetParam()) + ' '), std::string::npos) << copy;
}

INSTANTIATE_TEST_SUITE_P(ObjectCopier, NameOfAResource,
                         testing::Values("/A#", "/A#G1", "/A#4", "/A##", "/A#4G", "/#"));

// PDF 1.7, 7.8.3: what is drawn without resources of its own takes those of what draws it. The page's content
// is a form in the copy, and not every viewer looks there.
class BorrowedResources : public testing::Test {
protected:
    static constexpr const char *pageResources = "/ColorSpace<</Mine/DeviceRGB>>";
    static constexpr const char *naming = "/Mine cs 1 0 0 sc 0 0 9 9 re f";

    /// Adds a page whose resources are `names`, the same for all pages here, and `entries`.
    void addPage(const std::string &entries, const std::string &names = pageResources)
    {
        m_builder.addPage("/MediaBox[0 0 50 50]/Resources<<" + names + entries + ">>");
    }

    static void expectMine(QPDFObjectHandle drawn)
    {
        QPDFObjectHandle resources = (drawn.isStream() ? drawn.getDict() : drawn).getKey("/Resources");
        ASSERT_TRUE(resources.isDictionary());
        EXPECT_EQ(resources.getKey("/ColorSpace").getKey("/Mine").unparseResolved(), "/DeviceRGB");
    }

    PdfBuilder m_builder;
};

TEST_F(BorrowedResources, AreGivenToAForm)
{
    const int form = m_builder.addStream("/Subtype/Form/BBox[0 0 9 9]", naming);
    addPage("/XObject<</X " + reference(form) + ">>");
    ParsedCopy copy(m_builder.file());
    expectMine(copy.resources().getKey("/XObject").getKey("/X"));
}

TEST_F(BorrowedResources, AreGivenToAFormThatHasSomethingElseForThem)
{
    const int form = m_builder.addStream("/Subtype/Form/BBox[0 0 9 9]/Resources 12", naming);
    addPage("/XObject<</X " + reference(form) + ">>");
    ParsedCopy copy(m_builder.file());
    expectMine(copy.resources().getKey("/XObject").getKey("/X"));
}

TEST_F(BorrowedResources, AreGivenToTheGroupOfAMask)
{
    const int group = m_builder.addStream("/Subtype/Form/BBox[0 0 9 9]", naming);
    const int state = m_builder.add("<</SMask<</S/Luminosity/G " + reference(group) + ">>>>");
    addPage("/ExtGState<</G " + reference(state) + ">>");
    ParsedCopy copy(m_builder.file());
    expectMine(copy.resources().getKey("/ExtGState").getKey("/G").getKey("/SMask").getKey("/G"));
}

TEST_F(BorrowedResources, AreGivenToAPatternOfTiles)
{
    const int pattern =
        m_builder.addStream("/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9", naming);
    addPage("/Pattern<</T " + reference(pattern) + ">>");
    ParsedCopy copy(m_builder.file());
    expectMine(copy.resources().getKey("/Pattern").getKey("/T"));
}

TEST_F(BorrowedResources, AreGivenToAType3Font)
{
    const int glyph = m_builder.addStream("", naming);
    const std::string font =
        "<</Subtype/Type3/FirstChar 97/Resources 7/CharProcs<</a " + reference(glyph) + ">>>>";
    addPage("/Font<</Apart " + reference(m_builder.add(font)) + "/Direct" + font + ">>");
    ParsedCopy copy(m_builder.file());
    for (const char *name : {"/Apart", "/Direct"}) {
        QPDFObjectHandle copied = copy.resources().getKey("/Font").getKey(name);
        expectMine(copied);
        EXPECT_EQ(copied.getKey("/FirstChar").unparse(), "97") << name;
        EXPECT_TRUE(copied.getKey("/CharProcs").getKey("/a").isStream()) << name;
    }
    EXPECT_TRUE(copy.isSound()) << "no entry is there twice";
}

TEST_F(BorrowedResources, AreThoseOfThePageAgainBehindAFontWithItsOwn)
{
    const int glyph = m_builder.addStream("", naming);
    const int form = m_builder.addStream("/Subtype/Form/BBox[0 0 9 9]", naming);
    addPage("/Font<</T<</Subtype/Type3/Resources<</ColorSpace<</Mine/DeviceCMYK>>>>/CharProcs<</a " +
            reference(glyph) + ">>>>>>/XObject<</X " + reference(form) + ">>");
    ParsedCopy copy(m_builder.file());
    expectMine(copy.resources().getKey("/XObject").getKey("/X"));
}

TEST_F(BorrowedResources, AreGivenToAnAppearance)
{
    const int form = m_builder.addStream("/BBox[0 0 9 9]", naming);
    m_builder.addPage(std::string("/MediaBox[0 0 50 50]/Resources<<") + pageResources +
                      ">>/Annots[<</Subtype/Stamp/Rect[0 0 9 9]/AP<</N " + reference(form) + ">>>>]");
    ParsedCopy copy(m_builder.file());
    expectMine(copy.page().getKey("/Resources").getKey("/XObject").getKey("/A0"));
}

TEST_F(BorrowedResources, AreThoseOfWhatDrawsIt)
{
    const int inner = m_builder.addStream("/Subtype/Form/BBox[0 0 9 9]", naming);
    const int outer = m_builder.addStream(
        "/Subtype/Form/BBox[0 0 9 9]/Resources<</ColorSpace<</Mine/DeviceRGB>>/XObject<</I " +
            reference(inner) + ">>>>",
        "/I Do");
    addPage("/XObject<</X " + reference(outer) + ">>", "/ColorSpace<</Mine/DeviceCMYK>>");
    ParsedCopy copy(m_builder.file());
    QPDFObjectHandle drawn = copy.resources().getKey("/XObject").getKey("/X");
    expectMine(drawn.getDict().getKey("/Resources").getKey("/XObject").getKey("/I"));
}

TEST_F(BorrowedResources, AreThoseOfEachPage)
{
    const int form = m_builder.addStream("/Subtype/Form/BBox[0 0 9 9]", naming);
    addPage("/XObject<</X " + reference(form) + ">>", "/ColorSpace<</Mine/DeviceCMYK>>");
    addPage("/XObject<</X " + reference(form) + ">>");
    ParsedCopy copy(m_builder.file());
    const auto spaceOn = [&copy](int page) {
        QPDFObjectHandle drawn = copy.resources(page).getKey("/XObject").getKey("/X").getDict();
        return drawn.getKey("/Resources").getKey("/ColorSpace").getKey("/Mine").unparseResolved();
    };
    EXPECT_EQ(spaceOn(0), "/DeviceCMYK");
    EXPECT_EQ(spaceOn(1), "/DeviceRGB");
}

TEST_F(BorrowedResources, AreLentOnceByPagesThatHaveTheSame)
{
    const int form = m_builder.addStream("/Subtype/Form/BBox[0 0 9 9]", naming);
    addPage("/XObject<</X " + reference(form) + ">>");
    addPage("/XObject<</X " + reference(form) + ">>");
    ParsedCopy copy(m_builder.file());
    EXPECT_EQ(copy.resources(0).getKey("/XObject").getKey("/X").getObjGen(),
              copy.resources(1).getKey("/XObject").getKey("/X").getObjGen());
}

TEST_F(BorrowedResources, AreNotGivenToWhatNamesNone)
{
    const int form = m_builder.addStream("/Subtype/Form/BBox[0 0 9 9]", "1 0 0 rg 0 0 9 9 re f");
    addPage("/XObject<</X " + reference(form) + ">>");
    ParsedCopy copy(m_builder.file());
    EXPECT_FALSE(copy.resources().getKey("/XObject").getKey("/X").getDict().hasKey("/Resources"));
}

} // namespace tallyfold
