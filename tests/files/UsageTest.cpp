#include "files/Usage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

namespace tallyfold::files {

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

TEST(Usage, AStackIsNeverUsedUp)
{
    EXPECT_FALSE(isStackNearlyFull());
    EXPECT_GT(depth(0), 100U);
    std::size_t inThread = 0;
    std::thread([&inThread] { inThread = depth(0); }).join();
    EXPECT_GT(inThread, 100U);
}

TEST(Usage, OnlyTheThreadsOwnTimeCounts)
{
    const auto before = processorTimeOfThread();
    std::chrono::nanoseconds ofOther{};
    std::thread([&ofOther] {
        const auto atFirst = processorTimeOfThread();
        while (processorTimeOfThread() - atFirst < std::chrono::milliseconds(50)) {
        }
        ofOther = processorTimeOfThread() - atFirst;
    }).join();
    EXPECT_GE(ofOther, std::chrono::milliseconds(50));
    EXPECT_LT(processorTimeOfThread() - before, std::chrono::milliseconds(50));
}

TEST(Usage, MemoryThatIsWrittenToCounts)
{
    constexpr std::int64_t size = 64 * 1024 * 1024;
    const std::int64_t before = memoryOfProcess();
    ASSERT_GT(before, 0);
    const std::vector<char> memory(size, 'x');
    EXPECT_GE(memoryOfProcess() - before, size / 2) << memory.size();
}

} // namespace tallyfold::files
