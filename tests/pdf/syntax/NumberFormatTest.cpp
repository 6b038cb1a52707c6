#include "pdf/syntax/NumberFormat.h"

#include <gtest/gtest.h>

#include <limits>

namespace tallyfold::pdf {

namespace {

std::string formatted(double value, int decimals = 4)
{
    std::string out;
    appendNumber(out, value, decimals);
    return out;
}

} // namespace

TEST(NumberFormat, NumbersHaveNoExponentAndNoTrailingZeros)
{
    EXPECT_EQ(formatted(612), "612");
    EXPECT_EQ(formatted(0.5), "0.5");
    EXPECT_EQ(formatted(-18.25), "-18.25");
    EXPECT_EQ(formatted(1e-7), "0");
    EXPECT_EQ(formatted(100000), "100000");
    EXPECT_EQ(formatted(100, 0), "100");
    EXPECT_EQ(formatted(-0.5, 1), "-0.5");
    EXPECT_EQ(formatted(595.276, 2), "595.28");
}

TEST(NumberFormat, NegativeZeroIsZero)
{
    EXPECT_EQ(formatted(-0.0), "0");
    EXPECT_EQ(formatted(-0.00001), "0");
}

TEST(NumberFormat, ValuesNoPageHasBecomeZero)
{
    EXPECT_EQ(formatted(std::numeric_limits<double>::infinity()), "0");
    EXPECT_EQ(formatted(std::numeric_limits<double>::quiet_NaN()), "0");
    EXPECT_EQ(formatted(1e30), "0");
    EXPECT_EQ(formatted(1e15), "1000000000000000");
    EXPECT_EQ(formatted(-1e15), "-1000000000000000");
    EXPECT_EQ(formatted(1.01e15), "0");
}

TEST(NumberFormat, IntegersKeepAllTheirDigits)
{
    std::string out;
    appendInteger(out, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(out, "-9223372036854775808");
}

} // namespace tallyfold::pdf
