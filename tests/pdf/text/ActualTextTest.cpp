#include "pdf/text/ActualText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// A run of one glyph for each of `texts`.
GlyphRun runOf(const std::vector<std::u16string> &texts, bool isRightToLeft = false)
{
    GlyphRun run{nullptr, isRightToLeft, {}};
    for (const std::u16string &text : texts) {
        run.glyphs.push_back({0, 0, 0, 0, text});
    }
    return run;
}

/// The actual texts as "first-end:text|".
std::u16string found(const std::vector<GlyphRun> &runs)
{
    std::u16string list;
    for (const ActualText &part : actualTexts(runs)) {
        list += QString::number(part.first).toStdU16String() + u'-' +
                QString::number(part.end).toStdU16String() + u':' + part.text + u'|';
    }
    return list;
}

} // namespace

TEST(ActualText, GlyphsThatAddUpToTheTextNeedNone)
{
    EXPECT_EQ(found({}), u"");
    EXPECT_EQ(found({runOf({u"a", u"ffi", u" ", u"b"})}), u"");
}

TEST(ActualText, AWordWithAGlyphThatShowsNoTextHasOne)
{
    EXPECT_EQ(found({runOf({u"a", u" ", u"\u0e01\u0e33", u"", u" ", u"b"})}), u"2-4:\u0e01\u0e33|");
    EXPECT_EQ(found({runOf({u"", u"ab"})}), u"0-2:ab|");
    EXPECT_EQ(found({runOf({u"ab", u"", u" ", u"cd", u""})}), u"0-2:ab|3-5:cd|");
}

TEST(ActualText, OneCharacterNeedsNone)
{
    EXPECT_EQ(found({runOf({u"\u0e33", u""})}), u"");
}

TEST(ActualText, WhiteSpaceThatIsNotOneSpaceBetweenWordsBelongsToAWord)
{
    EXPECT_EQ(found({runOf({u"a", u" ", u" ", u"b"})}), u"0-4:a  b|");
    EXPECT_EQ(found({runOf({u"a", u"\u00a0", u"b"})}), u"0-3:a\u00a0b|");
    EXPECT_EQ(found({runOf({u" ", u"a"})}), u"0-2: a|");
    EXPECT_EQ(found({runOf({u"a", u" "})}), u"0-2:a |");
    EXPECT_EQ(found({runOf({u"a", u"x ", u" ", u"b"})}), u"0-4:ax  b|") << "a glyph that ends with a space";
    EXPECT_EQ(found({runOf({u"a", u" ", u" x", u"b"})}), u"0-4:a  xb|") << "a glyph that begins with one";
}

TEST(ActualText, ASpaceBesideAGlyphWithoutTextStillParts)
{
    EXPECT_EQ(found({runOf({u"ab", u"", u" ", u"", u"cd"})}), u"0-2:ab|3-5:cd|");
}

TEST(ActualText, WordsRunOnFromFontToFont)
{
    EXPECT_EQ(found({runOf({u"a"}), runOf({u"b", u""}), runOf({u"c", u" ", u"d"})}), u"0-4:abc|");
}

TEST(ActualText, ALineWithTextFromTheRightHasNone)
{
    EXPECT_EQ(found({runOf({u"ab", u""}), runOf({u"\u05d0"}, true)}), u"");
}

} // namespace tallyfold::pdf
