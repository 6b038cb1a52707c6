#include "pdf/syntax/Geometry.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

TEST(Geometry, ConcatenationAppliesTheFirstMatrixFirst)
{
    const Matrix turnLeft{0, 1, -1, 0, 0, 0};
    const Matrix moveRight{1, 0, 0, 1, 10, 0};
    EXPECT_EQ(transform(concatenate(turnLeft, moveRight), {2, 3}), (Point{7, 2}));
    EXPECT_EQ(transform(concatenate(moveRight, turnLeft), {2, 3}), (Point{-3, 12}));
}

TEST(Geometry, EveryEntryOfAMatrixHasItsPart)
{
    const Matrix first{2, 3, 5, 7, 11, 13};
    const Matrix second{17, 19, 23, 29, 31, 37};
    EXPECT_EQ(concatenate(first, second), (Matrix{103, 125, 246, 298, 517, 623}));
    EXPECT_EQ(transform(first, {100, 1000}), (Point{5211, 7313}));
    EXPECT_EQ(transform(concatenate(first, second), {41, 43}), transform(second, transform(first, {41, 43})));
}

TEST(Geometry, BoundsOfATurnedRectangleAreUpright)
{
    const Matrix turnLeft{0, 1, -1, 0, 0, 0};
    EXPECT_EQ(boundsOfTransformed(turnLeft, {1, 2, 5, 3}), (Rect{-3, 1, -2, 5}));
}

} // namespace tallyfold::pdf
