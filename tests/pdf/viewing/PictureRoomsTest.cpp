#include "pdf/viewing/PictureRooms.h"

#include <gtest/gtest.h>

#include <optional>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tallyfold::pdf {

TEST(PictureRooms, RoomIsSharedByWhoMapsItsFile)
{
    PictureRooms rooms;
    const auto room = rooms.lend(100);
    ASSERT_TRUE(room);
    ASSERT_GE(room->bytes().size(), 100U);
    const auto other = files::Mapping::sharedWith(room->descriptor(), 100);
    ASSERT_TRUE(other);
    other->bytes()[99] = 7;
    EXPECT_EQ(room->bytes()[99], 7);
}

TEST(PictureRooms, NobodyCanTakeTheMemoryOfARoomAway)
{
    PictureRooms rooms;
    const auto room = rooms.lend(100);
    ASSERT_TRUE(room);
    EXPECT_NE(::ftruncate(room->descriptor(), 0), 0);
    EXPECT_NE(::ftruncate(room->descriptor(), 200), 0);
}

TEST(PictureRooms, RoomsOfSeveralPicturesAreDifferent)
{
    PictureRooms rooms;
    const auto first = rooms.lend(100);
    const auto second = rooms.lend(100);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->descriptor(), second->descriptor());
    EXPECT_NE(first->bytes().data(), second->bytes().data());
}

TEST(PictureRooms, WhatCameBackIsLentAgainWhereItIsLargeEnough)
{
    PictureRooms rooms;
    auto room = rooms.lend(100);
    ASSERT_TRUE(room);
    room->bytes()[0] = 7;
    auto copy = room;
    room.reset();
    EXPECT_EQ(rooms.lend(100)->bytes()[0], 0) << "somebody still has it";
    PictureRooms others;
    EXPECT_EQ(others.lend(50)->bytes()[0], 0);
    copy.reset();
    const auto smaller = rooms.lend(50);
    EXPECT_EQ(smaller->bytes()[0], 7);
    EXPECT_EQ(rooms.lend(5000)->bytes()[0], 0);
}

TEST(PictureRooms, ThereIsNoneOfNothingAndNoneThatIsTooLarge)
{
    PictureRooms rooms;
    EXPECT_FALSE(rooms.lend(0));
    EXPECT_FALSE(rooms.lend(400'000'001));
}

TEST(PictureRooms, OnlyAsManyWaitAsThePagesOfAPreviewTake)
{
    constexpr std::size_t large = std::size_t{20} << 20U;
    PictureRooms rooms;
    auto first = rooms.lend(large);
    auto second = rooms.lend(large);
    ASSERT_TRUE(first && second);
    first->bytes()[0] = 1;
    second->bytes()[0] = 2;
    first.reset();
    second.reset();
    const auto again = rooms.lend(large);
    const auto fresh = rooms.lend(large);
    ASSERT_TRUE(again && fresh);
    EXPECT_EQ(again->bytes()[0], 2) << "the one that came back last";
    EXPECT_EQ(fresh->bytes()[0], 0);
}

TEST(PictureRooms, NoneIsLentAgainAfterAStartAnew)
{
    PictureRooms rooms;
    auto before = rooms.lend(100);
    before->bytes()[0] = 7;
    auto back = rooms.lend(100);
    back->bytes()[0] = 7;
    back.reset();
    rooms.startAnew();
    EXPECT_EQ(rooms.lend(100)->bytes()[0], 0);
    before.reset();
    EXPECT_EQ(rooms.lend(100)->bytes()[0], 0);
}

TEST(PictureRooms, ARoomOutlivesThem)
{
    std::optional<PictureRooms> rooms(std::in_place);
    const auto room = rooms->lend(100);
    ASSERT_TRUE(room);
    rooms.reset();
    room->bytes()[99] = 7;
    EXPECT_EQ(room->bytes()[99], 7);
}

} // namespace tallyfold::pdf
