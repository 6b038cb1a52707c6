#include "pdf/copy/OptionalContent.h"

#include "tests/support/ParsedCopy.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>

namespace tallyfold {

using tests::PdfBuilder;
using tests::reference;

namespace {

using Names = std::set<std::string>;

/// A file with layers A, B and C on its page and D on none, and the layers' entry of its copy.
class Layers {
public:
    /// Of a copy of the file with these properties of its layers.
    QPDFObjectHandle copied(const std::string &properties)
    {
        m_builder.addToCatalog("/OCProperties " + properties);
        const int content = m_builder.addStream("", "/A BDC EMC /B BDC EMC /C BDC EMC");
        m_builder.addPage("/MediaBox[0 0 99 99]/Contents " + reference(content) +
                          "/Resources<</Properties<</A " + a + "/B " + b + "/C " + c + ">>>>");
        m_copy.emplace(m_builder.file());
        return m_copy->catalog().getKey("/OCProperties");
    }

    [[nodiscard]] std::string all() const
    {
        return "/OCGs[" + a + ' ' + b + ' ' + c + ' ' + unused + "]";
    }

private:
    std::string layer(const std::string &name)
    {
        return reference(m_builder.add("<</Type/OCG/Name(" + name + ")>>"));
    }

    PdfBuilder m_builder;
    std::optional<tests::ParsedCopy> m_copy;

public:
    const std::string a = layer("A");
    const std::string b = layer("B");
    const std::string c = layer("C");
    const std::string unused = layer("D");
};

Names namesIn(QPDFObjectHandle groups)
{
    Names names;
    EXPECT_TRUE(groups.isArray()) << groups.unparse();
    for (QPDFObjectHandle group : groups.aitems()) {
        EXPECT_TRUE(group.isIndirect());
        names.insert(group.getKey("/Name").getStringValue());
    }
    return names;
}

} // namespace

TEST(OptionalContent, LayersOfThePagesAreKeptInTheirStates)
{
    Layers layers;
    QPDFObjectHandle copied =
        layers.copied("<<" + layers.all() + "/D<</BaseState/OFF/Intent/Design/ON[" + layers.a + ' ' +
                      layers.unused + "]/OFF[" + layers.b + ' ' + layers.c + "]/Order[" + layers.a + "]>>>>");
    EXPECT_EQ(namesIn(copied.getKey("/OCGs")), (Names{"A", "B", "C"}));
    QPDFObjectHandle configuration = copied.getKey("/D");
    EXPECT_EQ(configuration.getKey("/BaseState").unparse(), "/OFF");
    EXPECT_EQ(configuration.getKey("/Intent").unparse(), "/Design");
    EXPECT_EQ(namesIn(configuration.getKey("/ON")), (Names{"A"}));
    EXPECT_EQ(namesIn(configuration.getKey("/OFF")), (Names{"B", "C"}));
    EXPECT_EQ(configuration.getKeys().size(), 4U) << configuration.unparse();
}

TEST(OptionalContent, LayersThatSwitchByThemselvesAreKept)
{
    Layers layers;
    QPDFObjectHandle copied = layers.copied(
        "<<" + layers.all() + "/D<</Intent[/View 7/Design]/AS[(x)<</Event/View/Category[/Zoom/View]/OCGs[" +
        layers.a + "]>><</Event/Print/Category[/Print]/OCGs[" + layers.unused +
        "]>><</Event/Export/Category/Export/OCGs[" + layers.b + ' ' + layers.c + "]>>]>>>>");
    QPDFObjectHandle configuration = copied.getKey("/D");
    EXPECT_EQ(configuration.getKey("/Intent").unparse(), "[ /View /Design ]");
    QPDFObjectHandle states = configuration.getKey("/AS");
    ASSERT_EQ(states.getArrayNItems(), 2);
    EXPECT_EQ(states.getArrayItem(0).getKey("/Event").unparse(), "/View");
    EXPECT_EQ(states.getArrayItem(0).getKey("/Category").unparse(), "[ /Zoom /View ]");
    EXPECT_EQ(namesIn(states.getArrayItem(0).getKey("/OCGs")), (Names{"A"}));
    EXPECT_EQ(states.getArrayItem(1).getKey("/Event").unparse(), "/Export");
    EXPECT_EQ(states.getArrayItem(1).getKey("/Category").unparse(), "/Export");
    EXPECT_EQ(namesIn(states.getArrayItem(1).getKey("/OCGs")), (Names{"B", "C"}));
    EXPECT_EQ(configuration.getKeys().size(), 2U) << configuration.unparse();
}

TEST(OptionalContent, APageNamesTheLayersOfItsOwnAnnotationsAlone)
{
    tests::PdfBuilder builder;
    const int layer = builder.add("<</Type/OCG/Name(Notes)>>");
    const int mark = builder.addStream("/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f");
    builder.addPage("/MediaBox[0 0 50 50]/Annots[<</Subtype/Stamp/Rect[0 0 9 9]/OC " +
                    tests::reference(layer) + "/AP<</N " + tests::reference(mark) + ">>>>]");
    builder.addPage("/MediaBox[0 0 50 50]");
    builder.addToCatalog("/OCProperties<</OCGs[" + tests::reference(layer) + "]/D<<>>>>");
    tests::ParsedCopy copy(builder.file());
    const auto resources = [&copy](int index) { return copy.page(index).getKey("/Resources"); };
    EXPECT_EQ(resources(0).getKey("/Properties").getKeys().size(), 1U);
    EXPECT_FALSE(resources(1).hasKey("/Properties"));
}

TEST(OptionalContent, StatesOfNoLayerAreLeftOut)
{
    Layers layers;
    QPDFObjectHandle copied = layers.copied("<<" + layers.all() + "/D<</ON[" + layers.unused +
                                            "]/OFF 7/AS[<</OCGs[" + layers.unused + "]>>]>>>>");
    EXPECT_EQ(namesIn(copied.getKey("/OCGs")), (Names{"A", "B", "C"}));
    EXPECT_EQ(copied.getKey("/D").unparse(), "<< >>");
}

TEST(OptionalContent, ADefaultConfigurationIsWrittenWhereThereIsNone)
{
    Layers layers;
    QPDFObjectHandle copied = layers.copied("<<" + layers.all() + ">>");
    EXPECT_EQ(namesIn(copied.getKey("/OCGs")), (Names{"A", "B", "C"}));
    EXPECT_EQ(copied.getKey("/D").unparse(), "<< >>");
}

TEST(OptionalContent, WithoutLayersOnThePagesThereIsNoEntry)
{
    Layers one;
    EXPECT_TRUE(one.copied("<</OCGs[" + one.unused + "]/D<<>>>>").isNull());
    Layers other;
    EXPECT_TRUE(other.copied("<</OCGs[<<>> 7 null]/D<<>>>>").isNull());
    Layers none;
    EXPECT_TRUE(none.copied("[]").isNull());
}

} // namespace tallyfold
