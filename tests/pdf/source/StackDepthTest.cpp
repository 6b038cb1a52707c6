#include "pdf/source/StackDepth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <thread>

namespace tallyfold::pdf {

namespace {

/// How deep this goes until little of the stack is left.
std::size_t depth(std::size_t reached)
{
    std::array<volatile unsigned char, 1024> used{};
    used[reached % used.size()] = 1;
    const std::size_t deepest = isStackNearlyFull() ? reached : depth(reached + 1);
    return deepest * used[reached % used.size()]; // After the call, so that there is one.
}

} // namespace

TEST(StackDepth, AStackIsNeverUsedUp)
{
    EXPECT_FALSE(isStackNearlyFull());
    EXPECT_GT(depth(0), 100U);
    std::size_t inThread = 0;
    std::thread([&inThread] { inThread = depth(0); }).join();
    EXPECT_GT(inThread, 100U);
}

} // namespace tallyfold::pdf
