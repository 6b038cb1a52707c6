#include "pdf/text/TextShaper.h"

#include "tests/support/Fonts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tallyfold::pdf {

using namespace Qt::StringLiterals;
using tests::fontFile;

namespace {

/// Shapes lines in NimbusSans-Regular, with fonts of some other scripts beside it.
class TextShaperTest : public testing::Test {
protected:
    std::vector<GlyphRun> shape(const QString &text, const QString &name = u"NimbusSans-Regular"_s)
    {
        return m_shaper.shape(text, m_catalog.named(name), name);
    }

    /// The runs as "font:text of each glyph|", from left to right, a "<" before those from the right.
    QString runsOf(const QString &text, const QString &name = u"NimbusSans-Regular"_s)
    {
        QString runs;
        for (const GlyphRun &run : shape(text, name)) {
            runs += run.isRightToLeft ? u"<"_s : QString();
            runs += QString::fromStdString(run.face->postScriptName()).section(u'-', 0, 0) + u':';
            for (const PlacedGlyph &glyph : run.glyphs) {
                runs += QString::fromStdU16String(glyph.text) + u'|';
            }
        }
        return runs;
    }

    double widthOf(const QString &text, const QString &name = u"NimbusSans-Regular"_s)
    {
        double width = 0;
        for (const GlyphRun &run : shape(text, name)) {
            for (const PlacedGlyph &glyph : run.glyphs) {
                width += glyph.advance;
            }
        }
        return width;
    }

private:
    FontCatalog m_catalog{
        std::vector{fontFile("NimbusSans-Regular.otf"), fontFile("NimbusMonoPS-Regular.otf"),
                    fontFile("NotoSansThai-Regular.ttf"), fontFile("NotoSansHebrew-Regular.ttf"),
                    fontFile("NotoSansDevanagari-Regular.ttf")}};
    TextShaper m_shaper{m_catalog};
};

} // namespace

TEST_F(TextShaperTest, NothingHasNoRuns)
{
    EXPECT_TRUE(shape({}).empty());
}

TEST_F(TextShaperTest, PlainTextIsOneRunOfItsFont)
{
    EXPECT_EQ(runsOf(u"A1 b"_s), u"NimbusSans:A|1| |b|"_s);
}

TEST_F(TextShaperTest, PairsAreKerned)
{
    EXPECT_LT(widthOf(u"AV"_s), widthOf(u"A"_s) + widthOf(u"V"_s));
    EXPECT_DOUBLE_EQ(widthOf(u"HH"_s), 2 * widthOf(u"H"_s));
}

TEST_F(TextShaperTest, ALigatureKeepsItsLetters)
{
    EXPECT_EQ(runsOf(u"office"_s), u"NimbusSans:o|ffi|c|e|"_s);
}

TEST_F(TextShaperTest, AFontOfOnePitchHasNoLigatures)
{
    EXPECT_EQ(runsOf(u"fi"_s, u"NimbusMonoPS-Regular"_s), u"NimbusMonoPS:f|i|"_s);
    EXPECT_DOUBLE_EQ(widthOf(u"fi"_s, u"NimbusMonoPS-Regular"_s), 1200);
}

TEST_F(TextShaperTest, CharactersThatTheFontLacksComeFromAnother)
{
    EXPECT_EQ(runsOf(u"a\u0e01b"_s), u"NimbusSans:a|NotoSansThai:\u0e01|NimbusSans:b|"_s);
}

TEST_F(TextShaperTest, ACharacterThatNoFontHasIsABoxWithItsText)
{
    const std::vector<GlyphRun> runs = shape(u"\U0010fffd"_s);
    ASSERT_EQ(runs.size(), 1U);
    ASSERT_EQ(runs.front().glyphs.size(), 1U);
    EXPECT_EQ(runs.front().glyphs.front().glyph, 0U);
    EXPECT_EQ(runs.front().glyphs.front().text, u"\U0010fffd");
    EXPECT_TRUE(runs.front().face->hasVisibleNotdef());
}

TEST_F(TextShaperTest, TextFromTheRightRunsFromTheRight)
{
    EXPECT_EQ(runsOf(u"\u05d0\u05d1"_s), u"<NotoSansHebrew:\u05d1|\u05d0|"_s);
    EXPECT_EQ(runsOf(u"a \u05d0\u05d1"_s), u"NimbusSans:a| |<NotoSansHebrew:\u05d1|\u05d0|"_s);
}

TEST_F(TextShaperTest, AnAccentMayBeWrittenApart)
{
    EXPECT_EQ(runsOf(u"e\u0301"_s).section(u':', 1).remove(u'|'), u"e\u0301"_s);
    EXPECT_DOUBLE_EQ(widthOf(u"e\u0301"_s), widthOf(u"\u00e9"_s));
}

TEST_F(TextShaperTest, ReorderedLettersShareTheTextOfTheirCluster)
{
    // The vowel sign is drawn before the letter that it follows.
    const QString runs = runsOf(u"\u0915\u093f"_s);
    EXPECT_EQ(runs.section(u':', 1).remove(u'|'), u"\u0915\u093f"_s) << runs.toStdString();
    EXPECT_EQ(shape(u"\u0915\u093f"_s).front().glyphs.size(), 2U);
}

TEST_F(TextShaperTest, WhatIsNeverSeenTakesNoRoom)
{
    EXPECT_DOUBLE_EQ(widthOf(u"a\u200bb"_s), widthOf(u"ab"_s));
    EXPECT_EQ(runsOf(u"a\u200bb"_s).section(u':', 1).remove(u'|'), u"a\u200bb"_s);
    EXPECT_DOUBLE_EQ(widthOf(u"\u200b"_s), 0);
}

} // namespace tallyfold::pdf
