#include "pdf/text/ClusterText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// The texts of `count` glyphs that share `text`, from left to right.
std::vector<std::u16string> shared(std::u16string_view text, TextDirection direction, std::size_t count)
{
    std::vector<PlacedGlyph> glyphs(count);
    shareText(text, direction, glyphs);
    std::vector<std::u16string> texts;
    for (const PlacedGlyph &glyph : glyphs) {
        texts.push_back(glyph.text);
    }
    return texts;
}

using Texts = std::vector<std::u16string>;
constexpr TextDirection leftToRight = TextDirection::leftToRight;
constexpr TextDirection rightToLeft = TextDirection::rightToLeft;

} // namespace

TEST(ClusterText, ALigatureShowsAllItsLetters)
{
    EXPECT_EQ(shared(u"ffi", leftToRight, 1), Texts{u"ffi"});
    EXPECT_EQ(shared(u"\u0644\u0627", rightToLeft, 1), Texts{u"\u0644\u0627"});
}

TEST(ClusterText, EachOfSeveralGlyphsShowsACharacter)
{
    EXPECT_EQ(shared(u"e\u0301", leftToRight, 2), (Texts{u"e", u"\u0301"}));
    EXPECT_EQ(shared(u"\u05d1\u05bc", rightToLeft, 2), (Texts{u"\u05bc", u"\u05d1"}));
}

TEST(ClusterText, TheFirstGlyphThatIsReadShowsWhatIsLeftOver)
{
    EXPECT_EQ(shared(u"abcd", leftToRight, 2), (Texts{u"abc", u"d"}));
    EXPECT_EQ(shared(u"abcd", leftToRight, 3), (Texts{u"ab", u"c", u"d"}));
    EXPECT_EQ(shared(u"abcd", rightToLeft, 2), (Texts{u"d", u"abc"}));
}

TEST(ClusterText, GlyphsBeyondTheTextShowNothing)
{
    EXPECT_EQ(shared(u"\u0e33", leftToRight, 2), (Texts{u"\u0e33", u""}));
    EXPECT_EQ(shared(u"a", rightToLeft, 3), (Texts{u"", u"", u"a"}));
    EXPECT_EQ(shared(u"", leftToRight, 1), Texts{u""});
}

TEST(ClusterText, SurrogatePairsStayWhole)
{
    EXPECT_EQ(shared(u"\U0001f512\U0001f511", leftToRight, 2), (Texts{u"\U0001f512", u"\U0001f511"}));
    EXPECT_EQ(shared(u"\U0001f512x", leftToRight, 3), (Texts{u"\U0001f512", u"x", u""}));
    const std::u16string loneHalves{u'\xd83d', u'a', u'\xdd12'};
    EXPECT_EQ(shared(loneHalves, leftToRight, 3),
              (Texts{loneHalves.substr(0, 1), u"a", loneHalves.substr(2)}));
}

} // namespace tallyfold::pdf
