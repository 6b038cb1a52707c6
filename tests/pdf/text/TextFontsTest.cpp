#include "pdf/text/TextFonts.h"

#include "tests/support/Fonts.h"
#include "tests/support/RecordedObjects.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tallyfold::pdf {

using namespace Qt::StringLiterals;
using tests::fontFile;

namespace {

class TextFontsTest : public testing::Test {
protected:
    ShapedLine shape(const QString &text, double size = 10)
    {
        return m_fonts.shape(text, u"Helvetica"_s, size);
    }

    std::string shown(const ShapedLine &line) const
    {
        std::string operators;
        ContentStream content(operators);
        m_fonts.show(line, 72, 18.5, content);
        return operators;
    }

    /// The dictionary of the fonts after the last text.
    std::string finished()
    {
        const int number = m_fonts.resources();
        m_fonts.finish();
        return m_objects.objects[number];
    }

    tests::RecordedObjects m_objects;

private:
    FontCatalog m_catalog{
        std::vector{fontFile("NimbusSans-Regular.otf"), fontFile("NotoSansThai-Regular.ttf")}};

protected:
    TextFonts m_fonts{m_objects, m_catalog};
};

} // namespace

TEST_F(TextFontsTest, ALineIsMeasuredInPoints)
{
    const ShapedLine small = shape(u"HH000"_s, 10);
    const ShapedLine large = shape(u"HH000"_s, 20);
    EXPECT_DOUBLE_EQ(small.width, (2 * 722 + 3 * 556) / 100.0);
    EXPECT_DOUBLE_EQ(large.width, 2 * small.width);
    EXPECT_DOUBLE_EQ(large.ascent, 2 * small.ascent);
    EXPECT_GT(small.ascent, 5);
    EXPECT_GT(small.descent, 0);
    EXPECT_EQ(small.size, 10);
    EXPECT_TRUE(small.actualTexts.empty());
}

TEST_F(TextFontsTest, ALineIsAsHighAsTheHighestOfItsFonts)
{
    const ShapedLine plain = shape(u"a"_s);
    const ShapedLine mixed = shape(u"a\u0e01"_s);
    EXPECT_GT(mixed.ascent, plain.ascent);
    EXPECT_GE(mixed.descent, plain.descent);
    const ShapedLine empty = shape({});
    EXPECT_EQ(empty.width, 0);
    EXPECT_EQ(empty.ascent, plain.ascent);
    EXPECT_TRUE(empty.glyphs.empty());
}

TEST_F(TextFontsTest, ControlCharactersAreSpacesOrNothing)
{
    EXPECT_EQ(shape(u"a\tb\nc\u2028d"_s).width, shape(u"a b c d"_s).width);
    EXPECT_EQ(shape(u"a\u0007b"_s).width, shape(u"ab"_s).width);
    EXPECT_EQ(shape(u"a\u0007b"_s).glyphs.size(), 2U);
}

TEST_F(TextFontsTest, WithoutAnyFontALineIsEmpty)
{
    FontCatalog none(std::vector<std::filesystem::path>{});
    TextFonts fonts(m_objects, none);
    const ShapedLine line = fonts.shape(u"text"_s, u"Helvetica"_s, 12);
    EXPECT_TRUE(line.glyphs.empty());
    EXPECT_EQ(line.width, 0);
    EXPECT_FALSE(fonts.isUsed());
}

TEST_F(TextFontsTest, TextIsShownByCodesInTheOrderOfFirstUse)
{
    EXPECT_EQ(shown(shape(u"HEEH"_s)), "BT 72 18.5 Td\n/T0 10 Tf\n[<0001000200020001>]TJ\nET\n");
    EXPECT_EQ(shown(shape({})), "");
}

TEST_F(TextFontsTest, AllDigitsGetTheirCodesWithTheFirst)
{
    EXPECT_EQ(shown(shape(u"7A3"_s)), "BT 72 18.5 Td\n/T0 10 Tf\n[<0008000B0004>]TJ\nET\n");
}

TEST_F(TextFontsTest, KerningIsAnAdjustment)
{
    const std::string operators = shown(shape(u"AV"_s));
    EXPECT_TRUE(operators.starts_with("BT 72 18.5 Td\n/T0 10 Tf\n[<0001>")) << operators;
    EXPECT_TRUE(operators.ends_with("<0002>]TJ\nET\n")) << operators;
}

TEST_F(TextFontsTest, AnotherFontIsSelectedWithinTheTextObject)
{
    EXPECT_EQ(shown(shape(u"a\u0e01b"_s)),
              "BT 72 18.5 Td\n/T0 10 Tf\n[<0001>]TJ\n/T1 10 Tf\n[<0001>]TJ\n/T0 10 Tf\n[<0002>]TJ\nET\n");
}

TEST_F(TextFontsTest, AFurtherTextOfAGlyphIsInAFurtherLayer)
{
    // A box for each of two characters that no font has: one glyph with two texts.
    const std::string operators = shown(shape(u"\U0010fffd\U0010fffc"_s));
    EXPECT_NE(operators.find("L1 10 Tf\n[<0001>]TJ\n"), std::string::npos) << operators;
    EXPECT_NE(finished().find("L1 "), std::string::npos);
}

TEST_F(TextFontsTest, ARiseOfTheTextEndsWithTheTextObject)
{
    ShapedLine line = shape(u"HEH"_s);
    line.glyphs[1].yOffset = 250;
    EXPECT_EQ(shown(line),
              "BT 72 18.5 Td\n/T0 10 Tf\n[<0001>]TJ\n2.5 Ts\n[<0002>]TJ\n0 Ts\n[<0001>]TJ\nET\n");
    line.glyphs[2].yOffset = 250;
    EXPECT_EQ(shown(line), "BT 72 18.5 Td\n/T0 10 Tf\n[<0001>]TJ\n2.5 Ts\n[<00020001>]TJ\n0 Ts\nET\n");
}

TEST_F(TextFontsTest, AnActualTextIsAroundTheGlyphsThatDoNotSayIt)
{
    const ShapedLine line = shape(u"a \u0e01\u0e33"_s); // One vowel, drawn by two glyphs.
    ASSERT_EQ(line.actualTexts.size(), 1U);
    EXPECT_EQ(line.actualTexts.front().text, u"\u0e01\u0e33");
    const std::string operators = shown(line);
    const std::size_t begin = operators.find("/Span<</ActualText<FEFF0E010E33>>>BDC\n");
    ASSERT_NE(begin, std::string::npos) << operators;
    EXPECT_TRUE(operators.ends_with(">]TJ\nEMC\nET\n")) << operators;
    EXPECT_EQ(operators.substr(0, begin).find("EMC"), std::string::npos);
}

TEST_F(TextFontsTest, FontsAreWrittenOnceAtTheEnd)
{
    const int number = m_fonts.resources();
    EXPECT_EQ(m_fonts.resources(), number);
    EXPECT_FALSE(m_fonts.isUsed());
    (void)shape(u"AB"_s);
    (void)shape(u"BC"_s);
    EXPECT_TRUE(m_fonts.isUsed());
    EXPECT_TRUE(m_objects.objects.empty());
    const std::string resources = finished();
    EXPECT_TRUE(resources.starts_with("<</T0 ")) << resources;
    EXPECT_EQ(resources.find("/T1"), std::string::npos) << resources;
    int programs = 0;
    for (const auto &[object, stream] : m_objects.streams) {
        programs += stream.entries.starts_with("/Filter/FlateDecode/Subtype/CIDFontType0C") ? 1 : 0;
    }
    EXPECT_EQ(programs, 1);
}

TEST_F(TextFontsTest, WithoutResourcesNothingIsWritten)
{
    m_fonts.finish();
    EXPECT_TRUE(m_objects.objects.empty());
    EXPECT_TRUE(m_objects.streams.empty());
}

} // namespace tallyfold::pdf
