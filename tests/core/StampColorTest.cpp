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

TEST(StampColor, NegativeZeroHashesLikeZero)
{
    EXPECT_EQ(hashValue({-0.0, 0, 0, 1}), hashValue({0.0, 0, 0, 1}));
}

} // namespace tallyfold
