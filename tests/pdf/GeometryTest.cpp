#include "pdf/Geometry.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

TEST(Geometry, ConcatenationAppliesTheFirstMatrixFirst)
{
    const Matrix turnLeft{0, 1, -1, 0, 0, 0};
    const Matrix moveRight{1, 0, 0, 1, 10, 0};
    EXPECT_EQ(transform(concatenate(turnLeft, moveRight), {2, 3}), (Point{7, 2}));
    EXPECT_EQ(transform(concatenate(moveRight, turnLeft), {2, 3}), (Point{-3, 12}));
}

TEST(Geometry, BoundsOfATurnedRectangleAreUpright)
{
    const Matrix turnLeft{0, 1, -1, 0, 0, 0};
    EXPECT_EQ(boundsOfTransformed(turnLeft, {1, 2, 5, 3}), (Rect{-3, 1, -2, 5}));
}

} // namespace tallyfold::pdf
