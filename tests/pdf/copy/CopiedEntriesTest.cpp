#include "tests/support/ParsedCopy.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace tallyfold {

using tests::PdfBuilder;
using tests::reference;

namespace {

/// A page whose resources have the objects that a test adds, and the copy of it.
class CopiedPage {
public:
    PdfBuilder &builder()
    {
        return m_builder;
    }

    /// The resources of the form that the copy has for a page with these resources.
    QPDFObjectHandle resources(const std::string &resources)
    {
        m_builder.addPage("/MediaBox[0 0 99 99]/Resources<<" + resources + ">>");
        m_copy.emplace(m_builder.file());
        return m_copy->resources();
    }

private:
    PdfBuilder m_builder;
    std::optional<tests::ParsedCopy> m_copy;
};

/// The dictionary of the copy of a stream with these entries.
QPDFObjectHandle copiedStream(CopiedPage &page, const std::string &entries)
{
    const int stream =
        page.builder().addStream("/Type/XObject/Subtype/Image/Width 1/Height 1" + entries, "x");
    return page.resources("/XObject<</I " + reference(stream) + ">>")
        .getKey("/XObject")
        .getKey("/I")
        .getDict();
}

std::string entry(QPDFObjectHandle dictionary, const std::string &key)
{
    return dictionary.hasKey(key) ? dictionary.getKey(key).unparse() : "none";
}

} // namespace

// PDF 1.7, 7.4.10: a copy is not encrypted, so there is nothing for a crypt filter to do.
TEST(CopiedEntries, ACryptFilterAloneGoesWithItsParameters)
{
    CopiedPage page;
    QPDFObjectHandle stream = copiedStream(page, "/Filter/Crypt/DecodeParms<</Name/Identity>>/Decode[1 0]");
    EXPECT_EQ(entry(stream, "/Filter"), "none");
    EXPECT_EQ(entry(stream, "/DecodeParms"), "none");
    EXPECT_EQ(entry(stream, "/Decode"), "[ 1 0 ]");
}

TEST(CopiedEntries, ACryptFilterThatLeadsGoesAndTheOthersStay)
{
    CopiedPage page;
    QPDFObjectHandle stream = copiedStream(
        page,
        "/Filter[/Crypt/ASCIIHexDecode/FlateDecode]/DecodeParms[<</Name/Identity>>null<</Predictor 2>>]");
    EXPECT_EQ(entry(stream, "/Filter"), "[ /ASCIIHexDecode /FlateDecode ]");
    EXPECT_EQ(entry(stream, "/DecodeParms"), "[ null << /Predictor 2 >> ]");
    CopiedPage alone;
    EXPECT_EQ(entry(copiedStream(alone, "/Filter[/Crypt]"), "/Filter"), "[ ]");
}

TEST(CopiedEntries, OtherFiltersStayAsTheyAre)
{
    CopiedPage one;
    EXPECT_EQ(entry(copiedStream(one, "/Filter/FlateDecode"), "/Filter"), "/FlateDecode");
    CopiedPage two;
    EXPECT_EQ(entry(copiedStream(two, "/Filter[/FlateDecode/DCTDecode]"), "/Filter"),
              "[ /FlateDecode /DCTDecode ]");
    CopiedPage none;
    EXPECT_EQ(entry(copiedStream(none, "/Filter[]"), "/Filter"), "[ ]");
}

TEST(CopiedEntries, PagesAndTheirTreeAreNotDrawnWithAndStayOut)
{
    CopiedPage page;
    const auto add = [&page](const std::string &entries) {
        return reference(page.builder().add("<<" + entries + ">>"));
    };
    const std::string parent = add("");
    QPDFObjectHandle states =
        page.resources("/ExtGState<</Page " + add("/Parent " + parent + "/MediaBox[0 0 1 1]") + "/Node " +
                       add("/Parent " + parent + "/Kids[]") + "/Child " + add("/Parent " + parent + "/K 1") +
                       "/Box " + add("/MediaBox[0 0 1 1]") + "/Kin " + add("/Kids[]") +
                       "/None 999 0 R/Straight<</Type/Page>>/Other " +
                       add("/Type/ExtGState/Parent 1/Kids[]") + ">>")
            .getKey("/ExtGState");
    EXPECT_TRUE(states.getKey("/Page").isNull());
    EXPECT_TRUE(states.getKey("/Node").isNull());
    EXPECT_EQ(states.getKey("/Child").getKey("/K").unparse(), "1");
    EXPECT_TRUE(states.getKey("/Box").hasKey("/MediaBox"));
    EXPECT_TRUE(states.getKey("/Kin").hasKey("/Kids"));
    EXPECT_TRUE(states.getKey("/Straight").isNull());
    EXPECT_EQ(states.unparse().find("/None"), std::string::npos) << "no object is made of what is not there";
    EXPECT_TRUE(states.getKey("/Other").hasKey("/Kids")) << "it says that it is something else";
}

TEST(CopiedEntries, OfAPagesContentOnlyItsEncodingStays)
{
    PdfBuilder builder;
    const int content = builder.addStream(
        "/Filter/ASCIIHexDecode/DecodeParms null/BBox[0 0 1 1]/Matrix[2 0 0 2 0 0]/Mine 1", "20>");
    builder.addPage("/MediaBox[0 0 99 99]/Contents " + reference(content));
    tests::ParsedCopy copy(builder.file());
    QPDFObjectHandle form = copy.page().getKey("/Resources").getKey("/XObject").getKey("/P").getDict();
    EXPECT_EQ(entry(form, "/Filter"), "/ASCIIHexDecode");
    EXPECT_EQ(entry(form, "/BBox"), "[ 0 0 99 99 ]");
    EXPECT_EQ(entry(form, "/Matrix"), "none");
    EXPECT_EQ(entry(form, "/Mine"), "none");
    EXPECT_TRUE(copy.isSound()) << "no entry is there twice";
}

TEST(CopiedEntries, ResourcesAreEachFormsOwnOrShared)
{
    CopiedPage page;
    const int shared = page.builder().add("<</ExtGState<</S<</ca 0.5>>>>>>");
    const auto form = [&page](const std::string &resources) {
        return reference(page.builder().addStream("/Subtype/Form/BBox[0 0 9 9]/Resources " + resources,
                                                  "/S gs 0 0 9 9 re f"));
    };
    QPDFObjectHandle copied =
        page.resources("/XObject<</A " + form("<</ExtGState<</S<</ca 0.1>>>>>>") + "/B " +
                       form("<</ExtGState<</S<</ca 0.2>>>>>>") + "/C " + form(reference(shared)) + "/D " +
                       form(reference(shared)) + ">>");
    const auto resources = [&copied](const char *name) {
        return copied.getKey("/XObject").getKey(name).getDict().getKey("/Resources");
    };
    for (const auto &[name, opacity] :
         {std::pair{"/A", "0.1"}, {"/B", "0.2"}, {"/C", "0.5"}, {"/D", "0.5"}}) {
        EXPECT_EQ(resources(name).getKey("/ExtGState").getKey("/S").getKey("/ca").unparse(), opacity) << name;
    }
    EXPECT_FALSE(resources("/A").isIndirect());
    EXPECT_TRUE(resources("/C").isIndirect());
    EXPECT_EQ(resources("/C").getObjGen(), resources("/D").getObjGen());
}

TEST(CopiedEntries, AnAppearanceThatIsMadeHasTheFontsThatItUses)
{
    PdfBuilder builder;
    builder.addPage("/MediaBox[0 0 99 99]/Annots[<</Subtype/Widget/FT/Tx/V(text)/Rect[0 0 50 20]>>"
                    "<</Subtype/Square/IC[1 0 0]/Rect[0 30 50 50]>>]");
    tests::ParsedCopy copy(builder.file());
    QPDFObjectHandle forms = copy.page().getKey("/Resources").getKey("/XObject");
    EXPECT_TRUE(forms.getKey("/A0").getDict().getKey("/Resources").getKey("/Font").isDictionary());
    EXPECT_FALSE(forms.getKey("/A1").getDict().getKey("/Resources").hasKey("/Font"));
}

TEST(CopiedEntries, AFormsResourcesThatAreNoneStayOut)
{
    CopiedPage page;
    const int form = page.builder().addStream("/Type/XObject/Subtype/Form/BBox[0 0 9 9]/Resources 7", "");
    QPDFObjectHandle copied =
        page.resources("/XObject<</F " + reference(form) + ">>").getKey("/XObject").getKey("/F").getDict();
    EXPECT_FALSE(copied.getKey("/Resources").isInteger()) << copied.unparse();
    EXPECT_TRUE(copied.getKey("/BBox").isArray());
}

} // namespace tallyfold
