#include "pdf/text/FontRequest.h"

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <string>

namespace tallyfold::pdf {

namespace {

std::string familiesOf(const QString &postScriptName)
{
    return FontRequest::of(postScriptName).families.join(u'|').toStdString();
}

int weightOf(const char *style)
{
    return FontRequest::of(QStringLiteral("Any-") + QString::fromLatin1(style)).weight;
}

bool isItalic(const char *postScriptName)
{
    return FontRequest::of(QString::fromLatin1(postScriptName)).isItalic;
}

} // namespace

TEST(FontRequest, TheFamilyIsTheNameUpToTheStyle)
{
    EXPECT_EQ(familiesOf(QStringLiteral("Verdana")), "Verdana");
    EXPECT_EQ(familiesOf(QStringLiteral("Verdana-Bold")), "Verdana");
    EXPECT_EQ(familiesOf(QStringLiteral("DejaVuSans-Bold-Oblique")), "DejaVuSans|Deja Vu Sans");
    EXPECT_EQ(familiesOf(QString()), "");
}

TEST(FontRequest, MarksOfAFoundryAreNoPartOfTheFamily)
{
    EXPECT_EQ(familiesOf(QStringLiteral("ArialMT")), "ArialMT|Arial");
    EXPECT_EQ(familiesOf(QStringLiteral("TimesNewRomanPSMT")),
              "TimesNewRomanPSMT|TimesNewRoman|Times New Roman");
    EXPECT_EQ(familiesOf(QStringLiteral("TimesNewRomanPS-BoldItalicMT")),
              "TimesNewRomanPS|TimesNewRoman|Times New Roman");
    EXPECT_EQ(familiesOf(QStringLiteral("MT")), "MT");
}

TEST(FontRequest, AWordBeginsWhereACapitalFollowsASmallLetter)
{
    EXPECT_EQ(familiesOf(QStringLiteral("ComicSansMS")), "ComicSansMS|Comic Sans MS");
    EXPECT_EQ(familiesOf(QStringLiteral("Comic Sans")), "Comic Sans");
}

TEST(FontRequest, TheStyleSaysTheWeight)
{
    EXPECT_EQ(weightOf(""), FC_WEIGHT_REGULAR);
    EXPECT_EQ(weightOf("Roman"), FC_WEIGHT_REGULAR);
    EXPECT_EQ(weightOf("Thin"), FC_WEIGHT_THIN);
    EXPECT_EQ(weightOf("LightItalic"), FC_WEIGHT_LIGHT);
    EXPECT_EQ(weightOf("Medium"), FC_WEIGHT_MEDIUM);
    EXPECT_EQ(weightOf("SemiBold"), FC_WEIGHT_DEMIBOLD);
    EXPECT_EQ(weightOf("Demi"), FC_WEIGHT_DEMIBOLD);
    EXPECT_EQ(weightOf("bolditalic"), FC_WEIGHT_BOLD);
    EXPECT_EQ(weightOf("ExtraBold"), FC_WEIGHT_EXTRABOLD);
    EXPECT_EQ(weightOf("Black"), FC_WEIGHT_BLACK);
    EXPECT_EQ(weightOf("Heavy"), FC_WEIGHT_BLACK);
    EXPECT_EQ(FontRequest::of(QStringLiteral("BlackChancery")).weight, FC_WEIGHT_REGULAR) << "a family";
}

TEST(FontRequest, TheStyleSaysWhetherLettersLean)
{
    EXPECT_TRUE(isItalic("Times-Italic"));
    EXPECT_TRUE(isItalic("Helvetica-BoldOblique"));
    EXPECT_FALSE(isItalic("Helvetica-Bold"));
    EXPECT_FALSE(isItalic("Italic"));
}

} // namespace tallyfold::pdf
