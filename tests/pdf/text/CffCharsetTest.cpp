#include "pdf/text/CffCharset.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tallyfold::pdf {

namespace {

using namespace std::string_literals;

/// An integer of a dictionary in its longest form (Adobe Technical Note 5176, table 3).
std::string fiveByteInteger(std::size_t value)
{
    return {'\x1d', static_cast<char>(value >> 24U), static_cast<char>(value >> 16U),
            static_cast<char>(value >> 8U), static_cast<char>(value)};
}

std::string indexOf(const std::string &item)
{
    return "\x00\x01\x01\x01"s + static_cast<char>(1 + item.size()) + item;
}

/// The operator ROS, which a font keyed by CID begins with, and its three operands.
const std::string keyedByCid = "\x8b\x8b\x8b\x0c\x1e"s;

/// A program of a header, a name, a Top DICT of `dictionary` and the place of the charset, and `charset`.
std::string programOf(const std::string &dictionary, const std::string &charset)
{
    const std::string head = "\x01\x00\x04\x01"s + indexOf("A");
    constexpr std::size_t placeLength = 6;
    const std::size_t place = head.size() + indexOf(dictionary).size() + placeLength;
    return head + indexOf(dictionary + fiveByteInteger(place) + "\x0f") + charset;
}

std::vector<int> cidsOf(const std::string &program, std::uint32_t glyphs)
{
    const CffCharset charset = CffCharset::of(program, glyphs);
    std::vector<int> cids;
    for (std::uint32_t glyph = 0; glyph < glyphs; ++glyph) {
        cids.push_back(charset.cidOf(glyph));
    }
    return cids;
}

using Cids = std::vector<int>;

} // namespace

TEST(CffCharset, WithoutAProgramCidsAreGlyphNumbers)
{
    EXPECT_EQ(CffCharset().cidOf(0), 0);
    EXPECT_EQ(CffCharset().cidOf(65535), 65535);
    EXPECT_EQ(cidsOf("", 3), (Cids{0, 1, 2}));
}

TEST(CffCharset, ListsOneCidForEachGlyphAfterTheFirst)
{
    EXPECT_EQ(cidsOf(programOf(keyedByCid, "\x00\x00\x07\x01\x02"s), 3), (Cids{0, 7, 0x102}));
}

TEST(CffCharset, RangesCountTheCidsAfterTheirFirst)
{
    EXPECT_EQ(cidsOf(programOf(keyedByCid, "\x01\x00\x0a\x02\x00\x50\x00"s), 5), (Cids{0, 10, 11, 12, 0x50}));
    EXPECT_EQ(cidsOf(programOf(keyedByCid, "\x02\x00\x0a\x00\x01\x01\x00\x00\x00"s), 4),
              (Cids{0, 10, 11, 0x100}));
}

TEST(CffCharset, ARangeEndsWithTheGlyphs)
{
    EXPECT_EQ(cidsOf(programOf(keyedByCid, "\x02\x00\x0a\xff\xff"s), 3), (Cids{0, 10, 11}));
}

TEST(CffCharset, GlyphsBeyondTheCharsetHaveTheirOwnNumber)
{
    const CffCharset charset = CffCharset::of(programOf(keyedByCid, "\x00\x00\x07"s), 2);
    EXPECT_EQ(charset.cidOf(1), 7);
    EXPECT_EQ(charset.cidOf(2), 2);
}

TEST(CffCharset, ACharsetOfNamesIsNoneOfCids)
{
    EXPECT_EQ(cidsOf(programOf("", "\x00\x00\x07\x01\x02"s), 3), (Cids{0, 1, 2}));
    EXPECT_EQ(cidsOf(programOf("\x8b\x0c\x07", "\x00\x00\x07\x01\x02"s), 3), (Cids{0, 1, 2}))
        << "another operator of two bytes";
}

TEST(CffCharset, APredefinedCharsetIsNoneOfCids)
{
    const std::string head = "\x01\x00\x04\x01"s + indexOf("A");
    for (const char *place : {"\x8b", "\x8c", "\x8d"}) { // 0, 1 and 2.
        EXPECT_EQ(cidsOf(head + indexOf(keyedByCid + place + "\x0f") + "\x00\x00\x07\x00\x08"s, 3),
                  (Cids{0, 1, 2}));
    }
}

TEST(CffCharset, OperandsBeforeThePlaceArePassedOver)
{
    const std::string charset = "\x00\x00\x07"s;
    for (const std::string &entry :
         {"\x1e\xe2\xa2\x5f\x05"s, "\x1e\x12\x3f\x05"s, "\x1e\xf5\x05"s, "\x1c\x01\x00\x05"s,
          "\x1d\x0f\x0f\x0f\x0f\x05"s, "\xf7\x0f\x05"s, "\xfa\x0f\x05"s, "\xfb\x0f\x05"s, "\xfe\x0f\x05"s}) {
        EXPECT_EQ(cidsOf(programOf(keyedByCid + entry, charset), 2), (Cids{0, 7}))
            << testing::PrintToString(entry);
    }
}

TEST(CffCharset, ThePlaceMayBeAnIntegerOfAnyLength)
{
    const std::string head = "\x01\x00\x04\x01"s + indexOf("A");
    // Each puts the charset where it says, with nothing in between.
    const auto program = [&](const std::string &place, std::size_t at) {
        std::string made = head + indexOf(keyedByCid + place + "\x0f");
        EXPECT_LE(made.size(), at);
        made.resize(at);
        return made + "\x00\x00\x07"s;
    };
    EXPECT_EQ(cidsOf(program("\xf6", 107), 2), (Cids{0, 7}));
    EXPECT_EQ(cidsOf(program("\xf7\x01"s, 109), 2), (Cids{0, 7}));
    EXPECT_EQ(cidsOf(program("\xfa\xff"s, 1131), 2), (Cids{0, 7}));
    EXPECT_EQ(cidsOf(program("\x1c\x04\x6c"s, 1132), 2), (Cids{0, 7}));
}

TEST(CffCharset, AProgramThatIsCutHasNone)
{
    const std::string whole = programOf(keyedByCid, "\x00\x00\x07\x00\x08"s);
    EXPECT_EQ(cidsOf(whole, 3), (Cids{0, 7, 8}));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(cidsOf(whole.substr(0, size), 3), (Cids{0, 1, 2})) << size;
    }
}

} // namespace tallyfold::pdf
