#include "core/StampColor.h"

#include <gtest/gtest.h>

#include <limits>

namespace tallyfold {

TEST(StampColor, ComponentsAreClampedAndNonFiniteOnesBecomeZero)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(StampColor::of(-0.5, 1.5, nan, infinity), (StampColor{0, 1, 0, 0}));
}

TEST(StampColor, TheReadyMadeOnesAreWhatTheyAreCalled)
{
    EXPECT_EQ(StampColor::black(), (StampColor{0, 0, 0, 1}));
    EXPECT_EQ(StampColor(), StampColor::black());
    EXPECT_EQ(StampColor::confidentialRed(), (StampColor{0.78, 0.08, 0.10, 1}));
    EXPECT_EQ(StampColor::darkBlue(), (StampColor{0.05, 0.20, 0.65, 1}));
}

TEST(StampColor, NegativeZeroHashesLikeZero)
{
    EXPECT_EQ(hashValue({-0.0, 0, 0, 1}), hashValue({0.0, 0, 0, 1}));
}

} // namespace tallyfold
