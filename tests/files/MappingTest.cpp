#include "files/Mapping.h"

#include "files/Descriptor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace tallyfold::files {

TEST(Mapping, OfMemoryIsEmptyAndCanBeWrittenTo)
{
    const auto memory = Mapping::ofMemory(10'000);
    ASSERT_TRUE(memory);
    ASSERT_EQ(memory->bytes().size(), 10'000U);
    EXPECT_EQ(std::ranges::count(memory->bytes(), 0), 10'000);
    std::ranges::fill(memory->bytes(), std::uint8_t{7});
    EXPECT_EQ(memory->bytes().back(), 7);
}

TEST(Mapping, IsGivenBackWhenItGoes)
{
    const std::uint8_t *place = nullptr;
    constexpr std::size_t size = 1 << 20;
    unsigned char isThere = 0;
    {
        const auto memory = Mapping::ofMemory(size);
        ASSERT_TRUE(memory);
        place = memory->bytes().data();
        EXPECT_EQ(::mincore(const_cast<std::uint8_t *>(place), 1, &isThere), 0);
    }
    EXPECT_EQ(::mincore(const_cast<std::uint8_t *>(place), 1, &isThere), -1);
}

TEST(Mapping, OfNoMemoryIsNone)
{
    EXPECT_FALSE(Mapping::ofMemory(0));
    EXPECT_FALSE(Mapping::ofMemory(std::size_t{1} << 60U));
}

TEST(Mapping, OfAFileIsSharedWithWhoElseMapsIt)
{
    const Descriptor file(::memfd_create("file", MFD_CLOEXEC));
    ASSERT_EQ(::ftruncate(file.number(), 100), 0);
    const auto first = Mapping::sharedWith(file.number(), 100);
    const auto second = Mapping::sharedWith(file.number(), 50);
    ASSERT_TRUE(first && second);
    first->bytes()[49] = 7;
    EXPECT_EQ(second->bytes().back(), 7);
}

TEST(Mapping, OfAFileThatHasNotSoManyBytesIsNone)
{
    const Descriptor file(::memfd_create("file", MFD_CLOEXEC));
    ASSERT_EQ(::ftruncate(file.number(), 100), 0);
    EXPECT_FALSE(Mapping::sharedWith(file.number(), 101));
    EXPECT_FALSE(Mapping::sharedWith(file.number(), 0));
    EXPECT_FALSE(Mapping::sharedWith(-1, 100));
}

TEST(Mapping, MovesWithItsBytes)
{
    auto first = Mapping::ofMemory(4);
    ASSERT_TRUE(first);
    first->bytes().front() = 1;
    const Mapping second = std::move(*first);
    EXPECT_EQ(second.bytes().front(), 1);
    EXPECT_TRUE(first->bytes().empty());
}

} // namespace tallyfold::files
