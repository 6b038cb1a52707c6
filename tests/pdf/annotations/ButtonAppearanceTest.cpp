#include "tests/support/AnnotatedPage.h"
#include "tests/support/Colors.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

#include <string>

namespace tallyfold {

using tests::AnnotatedPage;
using tests::black;
using tests::blue;
using tests::DrawnCopy;
using tests::red;
using tests::reference;
using tests::yellow;

namespace {

/// A page with one button of 40 by 40 points from (100, 40), which has a yellow background and a blue border
/// where no appearance of its own stands in for them.
class Button {
public:
    /// The appearances `states` of its states: of each the name, and whether it is red or blue.
    explicit Button(const std::string &states = {}, const std::string &box = "/BBox[0 0 40 40]")
    {
        std::string list;
        for (const char state : states) {
            list += (state == '1' ? "/Yes " : "/Off ") +
                    reference(m_page.builder().addStream("/Type/XObject/Subtype/Form" + box,
                                                         std::string(state == '1' ? "1 0 0" : "0 0 1") +
                                                             " rg 0 0 40 40 re f"));
        }
        m_appearances = states.empty() ? "" : "/AP<</N<<" + list + ">>>>";
    }

    /// What the copy shows of it with these entries, in a form with those.
    [[nodiscard]] DrawnCopy with(const std::string &entries, const std::string &formEntries = {})
    {
        const std::string widget =
            m_page.annotate("/Subtype/Widget/FT/Btn/T(a)/Rect[100 40 140 80]/MK<</BG[1 1 0]/BC[0 0 1]>>"
                            "/BS<</W 4>>" +
                            m_appearances + entries);
        m_page.builder().addToCatalog("/AcroForm<</Fields[" + widget + "]" + formEntries + ">>");
        return DrawnCopy(m_page.file());
    }

private:
    AnnotatedPage m_page;
    std::string m_appearances;
};

constexpr const char *outdated = "/NeedAppearances true";

bool isFrame(const DrawnCopy &drawn)
{
    return drawn.is(blue, 102, 60) && drawn.is(yellow, 106, 74);
}

/// A frame without a mark.
bool isOff(const DrawnCopy &drawn)
{
    return isFrame(drawn) && drawn.is(yellow, 117, 52) && drawn.is(yellow, 120, 60);
}

/// A frame with a check mark.
bool isOn(const DrawnCopy &drawn)
{
    return isFrame(drawn) && drawn.is(black, 117, 52);
}

} // namespace

TEST(ButtonAppearance, AnUncheckedBoxWithoutAPictureOfThatHasItsFrame)
{
    for (const char *form : {"", outdated}) {
        EXPECT_TRUE(isOff(Button("1").with("/AS/Off/V/Off", form))) << form;
        EXPECT_TRUE(isOff(Button("1").with("/AS/Off/V/Yes", form))) << form;
        EXPECT_TRUE(isOff(Button("1").with("", form))) << form;
        EXPECT_TRUE(isOff(Button().with("/AS/Off", form))) << form;
        EXPECT_TRUE(isOff(Button().with("", form))) << form;
    }
}

TEST(ButtonAppearance, ARadioButtonThatIsOffHasARoundFrame)
{
    for (const char *form : {"", outdated}) {
        const DrawnCopy drawn = Button("1").with("/Ff 49152/AS/Off", form);
        EXPECT_TRUE(drawn.is(yellow, 120, 60)) << form;
        EXPECT_TRUE(drawn.is(blue, 102, 60)) << form;
        EXPECT_TRUE(drawn.isPaper(102, 42)) << form;
    }
}

TEST(ButtonAppearance, ARoundFrameIsACircleInTheMiddleOfALongRectangle)
{
    AnnotatedPage page;
    page.annotate("/Subtype/Widget/FT/Btn/Ff 49152/AS/Off/MK<</BG[1 1 0]/BC[0 0 1]>>/BS<</W 4>>"
                  "/Rect[100 40 180 80]");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(blue, 122, 60));
    EXPECT_TRUE(drawn.is(blue, 158, 60));
    EXPECT_TRUE(drawn.is(yellow, 140, 60));
    EXPECT_TRUE(drawn.isPaper(110, 60));
}

TEST(ButtonAppearance, PicturesOfItsOwnStayWhateverTheFormSays)
{
    for (const char *form : {"", outdated}) {
        EXPECT_TRUE(Button("1").with("/AS/Yes/V/Yes", form).is(red, 120, 60)) << form;
        EXPECT_TRUE(Button("10").with("/AS/Yes/V/Off", form).is(red, 120, 60)) << form;
        EXPECT_TRUE(Button("10").with("/AS/Off/V/Yes", form).is(blue, 120, 60)) << form;
    }
}

TEST(ButtonAppearance, AStateThatItDoesNotHaveIsOff)
{
    EXPECT_TRUE(Button("10").with("/AS/Maybe/V/Yes").is(blue, 120, 60));
    EXPECT_TRUE(isOff(Button("1").with("/AS/Maybe/V/Yes")));
    EXPECT_TRUE(Button("0").with("/AS/Maybe", outdated).is(blue, 120, 60));
}

TEST(ButtonAppearance, WithoutAStateTheValueCountsWhereThereIsAPictureOfIt)
{
    EXPECT_TRUE(Button("10").with("/V/Yes").is(red, 120, 60));
    EXPECT_TRUE(Button("10").with("").is(blue, 120, 60));
    EXPECT_TRUE(Button("10").with("/V/Maybe").is(blue, 120, 60));
    EXPECT_TRUE(isOff(Button().with("/V/Yes")));
}

TEST(ButtonAppearance, AStateIsMarkedWhereThereAreNoPicturesAtAll)
{
    for (const char *form : {"", outdated}) {
        for (const char *none : {"", "/AP null", "/AP<<>>", "/AP<</N null>>", "/AP<</N<<>>>>"}) {
            EXPECT_TRUE(isOn(Button().with(std::string("/AS/Yes") + none, form))) << form << none;
        }
    }
}

TEST(ButtonAppearance, AMarkWithoutABoxIsDrawnFromTheCorner)
{
    EXPECT_TRUE(Button("1", "").with("/AS/Yes").is(red, 120, 60));
}

TEST(ButtonAppearance, AMarkWithoutAUsableBoxIsMadeAnewWhereTheFormAsksForIt)
{
    for (const char *box : {"", "/BBox[0 0 0 0]", "/BBox[0 0 40]", "/BBox[/a/b/c/d]"}) {
        EXPECT_TRUE(isOn(Button("1", box).with("/AS/Yes", outdated))) << box;
    }
}

TEST(ButtonAppearance, APushButtonHasNoStateToLack)
{
    AnnotatedPage page;
    const std::string form = reference(page.form("1 0 0"));
    page.annotate("/Subtype/Widget/FT/Btn/Ff 65536/MK<</BG[1 1 0]/CA(Go)>>/Rect[10 40 50 80]/AP<</N " + form +
                  ">>");
    page.annotate("/Subtype/Widget/FT/Btn/Ff 65536/MK<</BG[1 1 0]/CA(Go)>>/Rect[100 40 140 80]/AP<</N<</Up " +
                  form + ">>>>");
    const DrawnCopy drawn(page.file());
    EXPECT_TRUE(drawn.is(red, 30, 60));
    EXPECT_TRUE(drawn.is(yellow, 102, 42));
    EXPECT_TRUE(drawn.hasInk(105, 45, 135, 75));
}

} // namespace tallyfold
