#include "pdf/syntax/Syntax.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

TEST(Syntax, NamesEscapeWhatIsNotRegular)
{
    std::string out;
    appendName(out, "/A B#(\xC3");
    EXPECT_EQ(out, "/A#20B#23#28#c3");
}

// The parser gives NUL for a "#" that no two hexadecimal digits follow.
TEST(Syntax, AStrayNumberSignOfANameStaysOne)
{
    using namespace std::string_view_literals;
    const auto written = [](std::string_view name) {
        std::string out;
        appendName(out, name);
        return out;
    };
    EXPECT_EQ(written("/A\0G1"sv), "/A#G1");
    EXPECT_EQ(written("/A\0"sv), "/A#");
    EXPECT_EQ(written("/A\0\0"sv), "/A##");
    EXPECT_EQ(written("/A\0004"sv), "/A#4");
    EXPECT_EQ(written("/A\0AB"sv), "/A##41B"); // "/A#AB" would be read as one character more.
}

TEST(Syntax, EveryDelimiterOfANameIsEscapedAndNothingElse)
{
    std::string out;
    appendName(out, "/#()<>[]{}/%");
    EXPECT_EQ(out, "/#23#28#29#3c#3e#5b#5d#7b#7d#2f#25");
    out.clear();
    appendName(out, "/!\"$&'*+,-.09:;=?@AZ\\^_`az|~");
    EXPECT_EQ(out, "/!\"$&'*+,-.09:;=?@AZ\\^_`az|~");
    out.clear();
    appendName(out, std::string_view("/\x1f \x7f\x80\xff", 6));
    EXPECT_EQ(out, "/#1f#20#7f#80#ff");
    out.clear();
    appendName(out, "");
    EXPECT_EQ(out, "/");
}

TEST(Syntax, TextStringsAreUtf16AndAnEmptyOneIsEmpty)
{
    const auto written = [](std::u16string_view text) {
        std::string out;
        appendTextString(out, text);
        return out;
    };
    EXPECT_EQ(written(u""), "()");
    EXPECT_EQ(written(u"(\u00e9"), "<FEFF002800E9>");
    EXPECT_EQ(written(u"\U0010fffd"), "<FEFFDBFFDFFD>");
}

TEST(Syntax, CodesAreFourHexadecimalDigits)
{
    std::string out;
    appendHex(out, 0x0a9f);
    appendHex(out, 0xffff);
    EXPECT_EQ(out, "0A9FFFFF");
}

TEST(Syntax, RectanglesAreWrittenCornerByCorner)
{
    std::string out;
    appendRect(out, {-10.5, 0, 612, 792.000001});
    EXPECT_EQ(out, "[-10.5 0 612 792.000001]");
    out.clear();
    appendRect(out, {0.0000004, 1, 2, 3});
    EXPECT_EQ(out, "[0 1 2 3]");
}

TEST(Syntax, MatricesAreSixNumbers)
{
    std::string out;
    appendMatrix(out, {0, -1, 1, 0, 0, 612});
    EXPECT_EQ(out, "0 -1 1 0 0 612");
    out.clear();
    appendMatrix(out, {1.000001, 2, 3, 4, 5, 6.0000004});
    EXPECT_EQ(out, "1.000001 2 3 4 5 6");
}

} // namespace tallyfold::pdf
