#include "reader/MappedBufferCache.h"

#include "pdf/viewing/SharedPixelBufferPool.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace tallyfold::reader {

namespace {

/// Bytes of which two, and no three, are kept.
constexpr std::size_t large = std::size_t{12} << 20U;

/// The bytes of files in memory that this process has among its own.
std::size_t mappedInMemory()
{
    std::ifstream maps("/proc/self/maps");
    std::size_t sum = 0;
    for (std::string line; std::getline(maps, line);) {
        if (line.find("/memfd:") != std::string::npos) {
            std::size_t begin = 0;
            std::size_t end = 0;
            char dash = 0;
            std::istringstream(line) >> std::hex >> begin >> dash >> end;
            sum += end - begin;
        }
    }
    return sum;
}

} // namespace

TEST(MappedBufferCache, BytesAreThoseOfTheBufferEachTime)
{
    pdf::SharedPixelBufferPool lender;
    const auto first = lender.lend(100);
    const auto second = lender.lend(100);
    ASSERT_TRUE(first && second);
    MappedBufferCache cache;
    for (std::uint8_t round = 1; round < 4; ++round) {
        const auto inFirst = cache.bytesOf(first->descriptor(), 100);
        ASSERT_EQ(inFirst.size(), 100U);
        inFirst[99] = round;
        const auto inSecond = cache.bytesOf(second->descriptor(), 50);
        ASSERT_EQ(inSecond.size(), 50U);
        inSecond[49] = static_cast<std::uint8_t>(round + 100);
        EXPECT_EQ(first->bytes()[99], round);
        EXPECT_EQ(second->bytes()[49], round + 100);
    }
}

TEST(MappedBufferCache, ABufferStaysMappedWhileThereIsSpace)
{
    pdf::SharedPixelBufferPool lender;
    const auto first = lender.lend(large);
    const auto second = lender.lend(large);
    const auto third = lender.lend(large);
    ASSERT_TRUE(first && second && third);
    MappedBufferCache cache;
    const auto *const place = cache.bytesOf(second->descriptor(), large).data();
    EXPECT_EQ(cache.bytesOf(first->descriptor(), large).size(), large);
    EXPECT_EQ(cache.bytesOf(second->descriptor(), large).data(), place);
    // The second one has been here for longest, and makes way.
    EXPECT_EQ(cache.bytesOf(third->descriptor(), large).size(), large);
    const auto again = cache.bytesOf(second->descriptor(), large);
    ASSERT_EQ(again.size(), large);
    again.back() = 7;
    EXPECT_EQ(second->bytes().back(), 7);
}

TEST(MappedBufferCache, MoreOfABufferThanBeforeIsMapped)
{
    pdf::SharedPixelBufferPool lender;
    const auto buffer = lender.lend(10'000);
    ASSERT_TRUE(buffer);
    MappedBufferCache cache;
    EXPECT_EQ(cache.bytesOf(buffer->descriptor(), 10).size(), 10U);
    const auto all = cache.bytesOf(buffer->descriptor(), 10'000);
    ASSERT_EQ(all.size(), 10'000U);
    all.back() = 7;
    EXPECT_EQ(buffer->bytes()[9'999], 7);
    EXPECT_EQ(cache.bytesOf(buffer->descriptor(), 10'000).data(), all.data()) << "and stays so";
}

TEST(MappedBufferCache, ABufferThatIsTooSmallOrNoneIsEmpty)
{
    pdf::SharedPixelBufferPool lender;
    const auto buffer = lender.lend(100);
    ASSERT_TRUE(buffer);
    MappedBufferCache cache;
    EXPECT_TRUE(cache.bytesOf(buffer->descriptor(), 1'000'000).empty());
    EXPECT_TRUE(cache.bytesOf(-1, 100).empty());
}

TEST(MappedBufferCache, ThirtyTwoMegabytesStayMapped)
{
    constexpr std::size_t half = std::size_t{16} << 20U;
    pdf::SharedPixelBufferPool lender;
    const auto first = lender.lend(half);
    const auto second = lender.lend(half);
    ASSERT_TRUE(first && second);
    MappedBufferCache cache;
    ASSERT_EQ(cache.bytesOf(first->descriptor(), half).size(), half);
    const auto before = cache.bytesOf(first->descriptor(), half);
    ASSERT_EQ(cache.bytesOf(second->descriptor(), half).size(), half);
    before.back() = 7; // It is still there, and could not be written to otherwise.
    EXPECT_EQ(first->bytes().back(), 7);
    EXPECT_EQ(cache.bytesOf(first->descriptor(), half).data(), before.data());
}

TEST(MappedBufferCache, NoMoreMakeWayThanHaveTo)
{
    pdf::SharedPixelBufferPool lender;
    const auto first = lender.lend(large);
    const auto second = lender.lend(large);
    const auto third = lender.lend(large);
    ASSERT_TRUE(first && second && third);
    MappedBufferCache cache;
    const std::size_t before = mappedInMemory();
    EXPECT_EQ(cache.bytesOf(first->descriptor(), large).size(), large);
    const auto stays = cache.bytesOf(second->descriptor(), large);
    ASSERT_EQ(stays.size(), large);
    EXPECT_EQ(mappedInMemory() - before, 2 * large);
    EXPECT_EQ(cache.bytesOf(third->descriptor(), large).size(), large);
    EXPECT_EQ(mappedInMemory() - before, 2 * large) << "of the first nothing is left";
    stays.back() = 9; // Which could not be written to if it were not there.
    EXPECT_EQ(second->bytes().back(), 9);
}

} // namespace tallyfold::reader
