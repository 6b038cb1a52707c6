#include "reader/LentRooms.h"

#include "pdf/viewing/PictureRooms.h"

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

TEST(LentRooms, BytesAreThoseOfTheRoomEachTime)
{
    pdf::PictureRooms lender;
    const auto first = lender.lend(100);
    const auto second = lender.lend(100);
    ASSERT_TRUE(first && second);
    LentRooms rooms;
    for (std::uint8_t round = 1; round < 4; ++round) {
        const auto inFirst = rooms.bytesOf(first->descriptor(), 100);
        ASSERT_EQ(inFirst.size(), 100U);
        inFirst[99] = round;
        const auto inSecond = rooms.bytesOf(second->descriptor(), 50);
        ASSERT_EQ(inSecond.size(), 50U);
        inSecond[49] = static_cast<std::uint8_t>(round + 100);
        EXPECT_EQ(first->bytes()[99], round);
        EXPECT_EQ(second->bytes()[49], round + 100);
    }
}

TEST(LentRooms, RoomStaysWhereItIsWhileThereIsSpace)
{
    pdf::PictureRooms lender;
    const auto first = lender.lend(large);
    const auto second = lender.lend(large);
    const auto third = lender.lend(large);
    ASSERT_TRUE(first && second && third);
    LentRooms rooms;
    const auto *const place = rooms.bytesOf(second->descriptor(), large).data();
    EXPECT_EQ(rooms.bytesOf(first->descriptor(), large).size(), large);
    EXPECT_EQ(rooms.bytesOf(second->descriptor(), large).data(), place);
    // The second one has been here for longest, and makes way.
    EXPECT_EQ(rooms.bytesOf(third->descriptor(), large).size(), large);
    const auto again = rooms.bytesOf(second->descriptor(), large);
    ASSERT_EQ(again.size(), large);
    again.back() = 7;
    EXPECT_EQ(second->bytes().back(), 7);
}

TEST(LentRooms, NoMoreMakeWayThanHaveTo)
{
    pdf::PictureRooms lender;
    const auto first = lender.lend(large);
    const auto second = lender.lend(large);
    const auto third = lender.lend(large);
    ASSERT_TRUE(first && second && third);
    LentRooms rooms;
    const std::size_t before = mappedInMemory();
    EXPECT_EQ(rooms.bytesOf(first->descriptor(), large).size(), large);
    const auto stays = rooms.bytesOf(second->descriptor(), large);
    ASSERT_EQ(stays.size(), large);
    EXPECT_EQ(mappedInMemory() - before, 2 * large);
    EXPECT_EQ(rooms.bytesOf(third->descriptor(), large).size(), large);
    EXPECT_EQ(mappedInMemory() - before, 2 * large) << "of the first nothing is left";
    stays.back() = 9; // Which could not be written to if it were not there.
    EXPECT_EQ(second->bytes().back(), 9);
}

TEST(LentRooms, MoreOfARoomThanBeforeIsThere)
{
    pdf::PictureRooms lender;
    const auto room = lender.lend(10'000);
    ASSERT_TRUE(room);
    LentRooms rooms;
    EXPECT_EQ(rooms.bytesOf(room->descriptor(), 10).size(), 10U);
    const auto all = rooms.bytesOf(room->descriptor(), 10'000);
    ASSERT_EQ(all.size(), 10'000U);
    all.back() = 7;
    EXPECT_EQ(room->bytes()[9'999], 7);
}

TEST(LentRooms, RoomThatIsTooSmallOrNoneIsEmpty)
{
    pdf::PictureRooms lender;
    const auto room = lender.lend(100);
    ASSERT_TRUE(room);
    LentRooms rooms;
    EXPECT_TRUE(rooms.bytesOf(room->descriptor(), 1'000'000).empty());
    EXPECT_TRUE(rooms.bytesOf(-1, 100).empty());
}

TEST(LentRooms, ThirtyTwoMegabytesAreKept)
{
    constexpr std::size_t half = std::size_t{16} << 20U;
    pdf::PictureRooms lender;
    const auto first = lender.lend(half);
    const auto second = lender.lend(half);
    ASSERT_TRUE(first && second);
    LentRooms rooms;
    ASSERT_EQ(rooms.bytesOf(first->descriptor(), half).size(), half);
    const auto before = rooms.bytesOf(first->descriptor(), half);
    ASSERT_EQ(rooms.bytesOf(second->descriptor(), half).size(), half);
    before.back() = 7; // It is still there, and could not be written to otherwise.
    EXPECT_EQ(first->bytes().back(), 7);
    EXPECT_EQ(rooms.bytesOf(first->descriptor(), half).data(), before.data());
}

} // namespace tallyfold::reader
