#include "pdf/Syntax.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

TEST(Syntax, NamesEscapeWhatIsNotRegular)
{
    std::string out;
    appendName(out, "/A B#(\xC3");
    EXPECT_EQ(out, "/A#20B#23#28#c3");
}

TEST(Syntax, RectanglesAreWrittenCornerByCorner)
{
    std::string out;
    appendRect(out, {-10.5, 0, 612, 792.000001});
    EXPECT_EQ(out, "[-10.5 0 612 792.000001]");
}

TEST(Syntax, MatricesAreSixNumbers)
{
    std::string out;
    appendMatrix(out, {0, -1, 1, 0, 0, 612});
    EXPECT_EQ(out, "0 -1 1 0 0 612");
}

} // namespace tallyfold::pdf
