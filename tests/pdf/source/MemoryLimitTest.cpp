#include "pdf/source/MemoryLimit.h"

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <thread>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// More than any machine has, with what the sanitizers need.
constexpr std::size_t far = MemoryLimit::maxBytes * 1024;

/// Whether so many bytes are to be had. They are not touched.
bool isGiven(std::size_t size)
{
    try {
        operator delete(operator new(size)); // A new expression might be left out by the compiler.
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

} // namespace

TEST(MemoryLimit, WhatGoesFarBeyondItIsRefusedAndRemembered)
{
    const MemoryLimit limit;
    EXPECT_TRUE(isGiven(MemoryLimit::maxBytes / 2));
    EXPECT_FALSE(MemoryLimit::wasReached());
    EXPECT_FALSE(isGiven(far));
    EXPECT_TRUE(MemoryLimit::wasReached());
    EXPECT_TRUE(isGiven(MemoryLimit::maxBytes / 2)) << "there is room for less";
}

TEST(MemoryLimit, ManySmallPiecesAreCountedTogether)
{
    const MemoryLimit limit;
    constexpr std::size_t piece = 1024 * 1024;
    std::vector<std::vector<char>> pieces;
    EXPECT_THROW(
        while (pieces.size() * piece < far) { pieces.emplace_back(piece, 'x'); }, std::bad_alloc);
    EXPECT_TRUE(MemoryLimit::wasReached());
    EXPECT_GT(pieces.size() * piece, MemoryLimit::maxBytes / 16);
    EXPECT_LT(pieces.size() * piece, MemoryLimit::maxBytes * 9);
}

TEST(MemoryLimit, ANewLimitKnowsNothingOfTheLastOne)
{
    {
        const MemoryLimit limit;
        EXPECT_FALSE(isGiven(far));
        const MemoryLimit second;
        EXPECT_TRUE(MemoryLimit::wasReached()) << "the first of them lives still";
    }
    const MemoryLimit limit;
    EXPECT_FALSE(MemoryLimit::wasReached());
}

TEST(MemoryLimit, OtherThreadsHaveTheirOwn)
{
    const MemoryLimit limit;
    EXPECT_FALSE(isGiven(far));
    std::optional<bool> wasReached;
    std::thread([&wasReached] {
        const MemoryLimit own;
        wasReached = MemoryLimit::wasReached();
    }).join();
    EXPECT_EQ(wasReached, false);
}

} // namespace tallyfold::pdf
