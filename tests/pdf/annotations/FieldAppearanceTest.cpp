#include "tests/support/FlatCopy.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Picture.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>

namespace tallyfold {

using tests::Color;
using tests::flatCopy;
using tests::PdfBuilder;
using tests::Picture;
using tests::reference;
using tests::soundPages;
using tests::TemporaryFolder;

namespace {

/// Where a word is on its page, in points from the lower left corner.
struct Place {
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;

    [[nodiscard]] double height() const
    {
        return top - bottom;
    }
};

/// A page of 300 by 200 points with form fields, and what the copy of it shows.
class Form {
public:
    /// Adds a field that is its own widget.
    void addField(const std::string &entries)
    {
        m_fields += reference(m_builder.add("<</Type/Annot/Subtype/Widget" + entries + ">>")) + ' ';
    }

    PdfBuilder &builder()
    {
        return m_builder;
    }

    /// Writes the copy; `formEntries` are those of the interactive form besides its fields.
    void copy(const std::string &formEntries = "/DA(/Helv 0 Tf 0 g)", const std::string &pageEntries = {})
    {
        m_builder.addPage("/MediaBox[0 0 300 200]/Annots[" + m_fields + "]" + pageEntries);
        m_builder.addToCatalog("/AcroForm<</Fields[" + m_fields + "]" + formEntries + ">>");
        m_copy = flatCopy(m_folder.path(), m_builder.file());
        EXPECT_EQ(soundPages(m_copy), 1);
    }

    [[nodiscard]] std::string text() const
    {
        return tests::textOfPage(m_copy, 1);
    }

    [[nodiscard]] bool shows(const std::string &text) const
    {
        return this->text().find(text) != std::string::npos;
    }

    /// Where Poppler finds `word`.
    [[nodiscard]] Place placeOf(const std::string &word) const
    {
        const std::string boxes = tests::runTool({"pdftotext", "-bbox", m_copy.string(), "-"}).output;
        const std::regex pattern("<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" "
                                 "yMax=\"([0-9.]+)\">" +
                                 word + "</word>");
        std::smatch match;
        if (!std::regex_search(boxes, match, pattern)) {
            ADD_FAILURE() << word << " is not in " << boxes;
            return {};
        }
        constexpr double height = 200;
        return {std::stod(match[1]), std::stod(match[3]), height - std::stod(match[4]),
                height - std::stod(match[2])};
    }

    [[nodiscard]] Picture drawn(Picture::Tool tool = Picture::Tool::poppler) const
    {
        return Picture::of(m_copy, tool);
    }

private:
    TemporaryFolder m_folder;
    PdfBuilder m_builder;
    std::string m_fields;
    std::filesystem::path m_copy;
};

constexpr const char *showsOld = "/Tx BMC q BT /Helv 12 Tf 2 6 Td (stale) Tj ET Q EMC";

/// An appearance stream that shows the word "stale".
int staleAppearance(PdfBuilder &builder)
{
    const int font = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    return builder.addStream("/Type/XObject/Subtype/Form/BBox[0 0 200 20]/Resources<</Font<</Helv " +
                                 reference(font) + ">>>>",
                             showsOld);
}

} // namespace

TEST(FieldAppearance, AValueWithoutAppearanceIsShown)
{
    Form form;
    form.addField("/FT/Tx/T(name)/V(Harriet Vane)/Rect[20 100 220 120]");
    form.copy();
    EXPECT_TRUE(form.shows("Harriet Vane")) << form.text();
}

TEST(FieldAppearance, AValueInUnicodeIsShown)
{
    Form form;
    form.addField("/FT/Tx/T(name)/V<FEFF0141006F0064007A0020673A5BC6>/Rect[20 100 220 120]");
    form.copy();
    EXPECT_TRUE(form.shows("Łodz 机密")) << form.text();
}

TEST(FieldAppearance, AnOutdatedAppearanceGivesWayToTheValue)
{
    Form form;
    form.addField("/FT/Tx/T(name)/V(current)/Rect[20 100 220 120]/AP<</N " +
                  reference(staleAppearance(form.builder())) + ">>");
    form.copy("/NeedAppearances true/DA(/Helv 0 Tf 0 g)");
    EXPECT_TRUE(form.shows("current")) << form.text();
    EXPECT_FALSE(form.shows("stale")) << form.text();
}

TEST(FieldAppearance, AnAppearanceThatIsNotOutdatedStays)
{
    Form form;
    form.addField("/FT/Tx/T(name)/V(current)/Rect[20 100 220 120]/AP<</N " +
                  reference(staleAppearance(form.builder())) + ">>");
    form.copy();
    EXPECT_TRUE(form.shows("stale")) << form.text();
    EXPECT_FALSE(form.shows("current")) << form.text();
}

TEST(FieldAppearance, AnOutdatedAppearanceOfNoValueGivesWayToTheEmptyBox)
{
    for (const char *value : {"", "/V()", "/V null"}) {
        for (const char *type : {"/FT/Tx", "/FT/Ch/Ff 131072/Opt[(one)]"}) {
            Form form;
            form.addField(std::string(type) + value +
                          "/T(name)/MK<</BG[1 1 0]>>/Rect[20 100 220 120]/AP<</N " +
                          reference(staleAppearance(form.builder())) + ">>");
            form.copy("/NeedAppearances true/DA(/Helv 0 Tf 0 g)");
            EXPECT_EQ(form.text().find("stale"), std::string::npos) << type << value << form.text();
            EXPECT_TRUE(form.drawn().at(120, 110).isNear({255, 255, 0})) << type << value;
        }
    }
}

TEST(FieldAppearance, TypeValueAndFontComeFromTheFieldsAbove)
{
    Form form;
    const int parent = form.builder().add("<</FT/Tx/T(name)/V(Inherited)/DA(/Helv 9 Tf 1 0 0 rg)/Q 2>>");
    form.addField("/Parent " + reference(parent) + "/Rect[20 100 220 120]");
    form.copy();
    const Place place = form.placeOf("Inherited");
    EXPECT_NEAR(place.right, 218, 1);
    EXPECT_LT(place.height(), 13);
}

TEST(FieldAppearance, FieldsThatAreTheirOwnParentsAreNotFollowedForEver)
{
    Form form;
    const int loop = form.builder().reserve();
    form.builder().set(loop, "<</Type/Annot/Subtype/Widget/Rect[0 0 50 20]/Parent " + reference(loop) + ">>");
    form.addField("/FT/Tx/T(name)/V(neighbour)/Rect[20 100 220 120]/Parent " + reference(loop));
    form.copy("/DA(/Helv 0 Tf 0 g)");
    EXPECT_TRUE(form.shows("neighbour"));
}

TEST(FieldAppearance, QuaddingPutsTextLeftInTheMiddleOrRight)
{
    Form form;
    form.addField("/FT/Tx/V(left)/Q 0/DA(/Helv 10 Tf 0 g)/Rect[50 150 250 170]");
    form.addField("/FT/Tx/V(centre)/Q 1/DA(/Helv 10 Tf 0 g)/Rect[50 100 250 120]");
    form.addField("/FT/Tx/V(right)/Q 2/DA(/Helv 10 Tf 0 g)/Rect[50 50 250 70]");
    form.copy();
    EXPECT_NEAR(form.placeOf("left").left, 52, 1);
    const Place centre = form.placeOf("centre");
    EXPECT_NEAR((centre.left + centre.right) / 2, 150, 1);
    EXPECT_NEAR(form.placeOf("right").right, 248, 1);
}

TEST(FieldAppearance, ASizeOfNoneFillsTheHeightUnlessTheTextIsTooWide)
{
    Form form;
    form.addField("/FT/Tx/V(tall)/Rect[10 120 290 180]");
    form.addField("/FT/Tx/V(Incomprehensibilities-of-antidisestablishmentarianism)/Rect[10 20 110 80]");
    form.copy();
    EXPECT_GT(form.placeOf("tall").height(), 35);
    const Place wide = form.placeOf("Incomprehensibilities-of-antidisestablishmentarianism");
    EXPECT_LT(wide.right, 110);
    EXPECT_GT(wide.left, 10);
}

TEST(FieldAppearance, SeveralLinesAreWrapped)
{
    Form form;
    form.addField("/FT/Tx/Ff 4096/DA(/Helv 12 Tf 0 g)"
                  "/V(The first words wrap when they reach the edge\\nSecond)/Rect[20 20 140 180]");
    form.copy();
    EXPECT_GT(form.placeOf("first").bottom, form.placeOf("reach").top - 3);
    EXPECT_GT(form.placeOf("edge").bottom, form.placeOf("Second").bottom + 5);
    EXPECT_LT(form.placeOf("wrap").right, 140);
    EXPECT_NEAR(form.placeOf("Second").left, 22, 1);
}

TEST(FieldAppearance, LongTextInSeveralLinesIsMadeSmallToFit)
{
    Form form;
    std::string text;
    for (int word = 0; word < 60; ++word) {
        text += "word" + std::to_string(word) + ' ';
    }
    form.addField("/FT/Tx/Ff 4096/V(" + text + "end)/Rect[20 100 160 180]");
    form.copy();
    EXPECT_GE(form.placeOf("end").bottom, 97);
}

TEST(FieldAppearance, APasswordIsNotGivenAway)
{
    Form form;
    form.addField("/FT/Tx/Ff 8192/V(secret)/Rect[20 100 220 120]");
    form.copy();
    EXPECT_FALSE(form.shows("secret"));
    EXPECT_TRUE(form.shows("******")) << form.text();
}

TEST(FieldAppearance, ACombHasACharacterToACell)
{
    Form form;
    form.addField("/FT/Tx/Ff 16777216/MaxLen 10/DA(/Helv 10 Tf 0 g)/V(AZ)/Rect[50 100 250 120]");
    form.copy();
    const Place first = form.placeOf("A");
    const Place second = form.placeOf("Z");
    EXPECT_NEAR((first.left + first.right) / 2, 60, 1);
    EXPECT_NEAR((second.left + second.right) / 2, 80, 1);
}

TEST(FieldAppearance, AComboBoxShowsTheOptionsText)
{
    Form form;
    form.addField("/FT/Ch/Ff 131072/Opt[[(us)(United States)][(ca)(Canada)]]/V(ca)/Rect[20 100 220 120]");
    form.addField("/FT/Ch/Ff 393216/Opt[(one)]/V(Typed in)/Rect[20 140 220 160]");
    form.copy();
    EXPECT_TRUE(form.shows("Canada"));
    EXPECT_FALSE(form.shows("United States"));
    EXPECT_TRUE(form.shows("Typed in"));
}

TEST(FieldAppearance, AComboBoxThatGivesOnlyTheIndexShowsTheOption)
{
    Form form;
    form.addField(
        "/FT/Ch/Ff 131072/Opt[[(us)(United States)][(ca)(Canada)]]/I[1]/Rect[20 100 220 120]/AP<</N " +
        reference(staleAppearance(form.builder())) + ">>");
    form.copy("/NeedAppearances true");
    EXPECT_TRUE(form.shows("Canada")) << form.text();
    EXPECT_FALSE(form.shows("United States")) << form.text();
}

TEST(FieldAppearance, AListBoxShowsItsOptionsAndMarksTheChosen)
{
    Form form;
    form.addField("/FT/Ch/DA(/Helv 10 Tf 0 g)/Opt[(Zero)(One)(Two)(Three)]/TI 1/V(Two)/Rect[20 100 220 160]");
    form.copy();
    EXPECT_FALSE(form.shows("Zero"));
    EXPECT_GT(form.placeOf("One").bottom, form.placeOf("Three").bottom);
    const Place two = form.placeOf("Two");
    const Color chosen{153, 193, 218};
    EXPECT_TRUE(form.drawn().at(200, (two.bottom + two.top) / 2).isNear(chosen));
    const Place one = form.placeOf("One");
    EXPECT_TRUE(form.drawn().at(200, (one.bottom + one.top) / 2 + 2).isPaper());
}

TEST(FieldAppearance, AListBoxWithNothingChosenShowsItsOptions)
{
    for (const char *value : {"", "/V()", "/V[]", "/I[]", "/V null"}) {
        for (const bool isOutdated : {false, true}) {
            Form form;
            const std::string stale =
                isOutdated ? "/AP<</N " + reference(staleAppearance(form.builder())) + ">>" : "/AP null";
            form.addField("/FT/Ch/DA(/Helv 10 Tf 0 g)/Opt[(Zero)[(1)(One)]]/Rect[20 100 220 160]" +
                          std::string(value) + stale);
            form.copy(isOutdated ? "/NeedAppearances true" : "");
            EXPECT_TRUE(form.shows("Zero")) << value << isOutdated << form.text();
            EXPECT_TRUE(form.shows("One")) << value << isOutdated << form.text();
            EXPECT_FALSE(form.shows("stale")) << value << isOutdated << form.text();
        }
    }
}

TEST(FieldAppearance, AListBoxWithPicturesOfOtherStatesShowsItsOptions)
{
    Form form;
    form.addField("/FT/Ch/DA(/Helv 10 Tf 0 g)/Opt[(Zero)(One)]/Rect[20 100 220 160]/AP<</N<</Yes " +
                  reference(staleAppearance(form.builder())) + ">>>>");
    form.copy();
    EXPECT_TRUE(form.shows("Zero")) << form.text();
}

TEST(FieldAppearance, BackgroundAndBorderAreDrawn)
{
    Form form;
    form.addField("/FT/Tx/V(x)/MK<</BG[1 1 0]/BC[0 0 1]>>/BS<</W 4>>/Rect[50 50 250 150]");
    form.copy();
    for (const Picture::Tool tool : {Picture::Tool::poppler, Picture::Tool::mupdf}) {
        const Picture picture = form.drawn(tool);
        EXPECT_TRUE(picture.at(52, 100).isNear({0, 0, 255}));
        EXPECT_TRUE(picture.at(200, 100).isNear({255, 255, 0}));
        EXPECT_TRUE(picture.at(48, 100).isPaper());
    }
}

TEST(FieldAppearance, AFieldTurnedAgainstATurnedPageIsUpright)
{
    Form form;
    // On a page turned by 90 degrees, a widget that is turned by 90 as well reads from left to right.
    form.addField("/FT/Tx/V(upright)/MK<</R 90>>/DA(/Helv 10 Tf 0 g)/Rect[100 20 120 180]");
    form.copy("/DA(/Helv 0 Tf 0 g)", "/Rotate 90");
    const std::string boxes = form.text();
    EXPECT_TRUE(form.shows("upright")) << boxes;
    const Picture picture = form.drawn();
    EXPECT_DOUBLE_EQ(picture.width(), 200);
    // (100, 20)…(120, 180) is shown at (20, 180)…(180, 200) from the left and the bottom, text at its left
    // end.
    EXPECT_TRUE(picture.hasInk(20, 180, 60, 200));
    EXPECT_FALSE(picture.hasInk(100, 180, 180, 200));
}

TEST(FieldAppearance, AButtonThatIsOnHasItsMark)
{
    const std::map<std::string, std::string> marks{{"4", "check"},   {"l", "disc"},   {"8", "cross"},
                                                   {"u", "diamond"}, {"n", "square"}, {"H", "star"}};
    for (const auto &[caption, name] : marks) {
        Form form;
        form.addField("/FT/Btn/V/Yes/AS/Yes/MK<</CA(" + caption + ")>>/Rect[50 50 90 90]");
        form.addField("/FT/Btn/V/Off/AS/Off/MK<</CA(" + caption + ")>>/Rect[150 50 190 90]");
        form.copy();
        const Picture picture = form.drawn();
        EXPECT_TRUE(picture.hasInk(50, 50, 90, 90)) << name;
        EXPECT_FALSE(picture.hasInk(150, 50, 190, 90)) << name;
    }
}

TEST(FieldAppearance, ButtonsWithTheirOwnAppearancesAreNotPaintedOver)
{
    Form form;
    const int on =
        form.builder().addStream("/Type/XObject/Subtype/Form/BBox[0 0 40 40]", "1 0 0 rg 0 0 40 40 re f");
    form.addField("/FT/Btn/V/Yes/AS/Yes/MK<</CA(4)>>/AP<</N<</Yes " + reference(on) +
                  ">>>>/Rect[50 50 90 90]");
    form.addField("/FT/Btn/V/Yes/AS/Off/MK<</CA(4)>>/AP<</N<</Yes " + reference(on) +
                  ">>>>/Rect[150 50 190 90]");
    form.copy("/NeedAppearances true/DA(/Helv 0 Tf 0 g)");
    const Picture picture = form.drawn();
    EXPECT_TRUE(picture.at(70, 70).isNear({255, 0, 0}));
    EXPECT_FALSE(picture.hasInk(150, 50, 190, 90));
}

TEST(FieldAppearance, APushButtonShowsItsCaption)
{
    Form form;
    form.addField("/FT/Btn/Ff 65536/MK<</CA(Submit)/BG[0.8]>>/DA(/Helv 10 Tf 0 g)/Rect[50 50 150 80]");
    form.copy();
    const Place place = form.placeOf("Submit");
    EXPECT_NEAR((place.left + place.right) / 2, 100, 1);
}

TEST(FieldAppearance, ASignatureWithoutAppearanceShowsNothing)
{
    Form form;
    form.addField("/FT/Sig/MK<</BG[1 0 0]>>/Rect[50 50 150 80]");
    form.copy();
    EXPECT_FALSE(form.drawn().hasInk(0, 0, 300, 200));
}

TEST(FieldAppearance, AHiddenFieldKeepsItsValueToItself)
{
    Form form;
    form.addField("/FT/Tx/F 2/V(hidden value)/Rect[20 100 220 120]");
    form.copy("/NeedAppearances true/DA(/Helv 0 Tf 0 g)");
    EXPECT_FALSE(form.shows("hidden"));
}

} // namespace tallyfold
