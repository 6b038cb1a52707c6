#include "pdf/viewing/SharedPixelBufferPool.h"

#include <gtest/gtest.h>

#include <optional>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tallyfold::pdf {

TEST(SharedPixelBufferPool, ABufferIsSharedWithWhoeverMapsItsFile)
{
    SharedPixelBufferPool pool;
    const auto buffer = pool.lend(100);
    ASSERT_TRUE(buffer);
    ASSERT_GE(buffer->bytes().size(), 100U);
    const auto other = files::Mapping::sharedWith(buffer->descriptor(), 100);
    ASSERT_TRUE(other);
    other->bytes()[99] = 7;
    EXPECT_EQ(buffer->bytes()[99], 7);
}

TEST(SharedPixelBufferPool, NobodyCanChangeTheSizeOfABuffer)
{
    SharedPixelBufferPool pool;
    const auto buffer = pool.lend(100);
    ASSERT_TRUE(buffer);
    EXPECT_NE(::ftruncate(buffer->descriptor(), 0), 0);
    EXPECT_NE(::ftruncate(buffer->descriptor(), 200), 0);
}

TEST(SharedPixelBufferPool, BuffersOfSeveralPicturesAreDifferent)
{
    SharedPixelBufferPool pool;
    const auto first = pool.lend(100);
    const auto second = pool.lend(100);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->descriptor(), second->descriptor());
    EXPECT_NE(first->bytes().data(), second->bytes().data());
}

TEST(SharedPixelBufferPool, WhatCameBackIsLentAgainWhereItIsLargeEnough)
{
    SharedPixelBufferPool pool;
    auto buffer = pool.lend(100);
    ASSERT_TRUE(buffer);
    buffer->bytes()[0] = 7;
    auto copy = buffer;
    buffer.reset();
    EXPECT_EQ(pool.lend(100)->bytes()[0], 0) << "somebody still has it";
    SharedPixelBufferPool others;
    EXPECT_EQ(others.lend(50)->bytes()[0], 0);
    copy.reset();
    const auto smaller = pool.lend(50);
    EXPECT_EQ(smaller->bytes()[0], 7);
    EXPECT_EQ(pool.lend(5000)->bytes()[0], 0);
}

TEST(SharedPixelBufferPool, ThereIsNoneOfNothingAndNoneThatIsTooLarge)
{
    SharedPixelBufferPool pool;
    EXPECT_FALSE(pool.lend(0));
    EXPECT_FALSE(pool.lend(400'000'001));
}

TEST(SharedPixelBufferPool, OnlyAsManyAreKeptAsThePagesOfAPreviewTake)
{
    constexpr std::size_t large = std::size_t{20} << 20U;
    SharedPixelBufferPool pool;
    auto first = pool.lend(large);
    auto second = pool.lend(large);
    ASSERT_TRUE(first && second);
    first->bytes()[0] = 1;
    second->bytes()[0] = 2;
    first.reset();
    second.reset();
    const auto again = pool.lend(large);
    const auto fresh = pool.lend(large);
    ASSERT_TRUE(again && fresh);
    EXPECT_EQ(again->bytes()[0], 2) << "the one that came back last";
    EXPECT_EQ(fresh->bytes()[0], 0);
}

TEST(SharedPixelBufferPool, NoneIsLentAgainAfterAClear)
{
    SharedPixelBufferPool pool;
    auto before = pool.lend(100);
    before->bytes()[0] = 7;
    auto back = pool.lend(100);
    back->bytes()[0] = 7;
    back.reset();
    pool.clear();
    EXPECT_EQ(pool.lend(100)->bytes()[0], 0);
    before.reset();
    EXPECT_EQ(pool.lend(100)->bytes()[0], 0);
}

TEST(SharedPixelBufferPool, ABufferOutlivesThePool)
{
    std::optional<SharedPixelBufferPool> pool(std::in_place);
    const auto buffer = pool->lend(100);
    ASSERT_TRUE(buffer);
    pool.reset();
    buffer->bytes()[99] = 7;
    EXPECT_EQ(buffer->bytes()[99], 7);
}

} // namespace tallyfold::pdf
