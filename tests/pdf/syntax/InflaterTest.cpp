#include "pdf/syntax/Inflater.h"

#include "pdf/syntax/Deflater.h"

#include <gtest/gtest.h>

#include <string>

namespace tallyfold::pdf {

TEST(Inflater, GivesBackWhatWasCompressedAgainAndAgain)
{
    Deflater deflater;
    Inflater inflater;
    for (const std::size_t size : {0U, 1U, 300U, 100'000U}) {
        std::string data;
        for (std::size_t index = 0; index < size; ++index) {
            data.push_back(static_cast<char>(index * index));
        }
        std::string out(size, '\0');
        EXPECT_EQ(inflater.expand(deflater.compress(data), out.data(), out.size()),
                  static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(out, data);
    }
}

TEST(Inflater, TakesNothingThatIsCutOrDamagedOrTooLarge)
{
    Deflater deflater;
    Inflater inflater;
    const std::string packed(deflater.compress(std::string(1000, 'x')));
    std::string out(1000, '\0');
    for (std::size_t size = 0; size < packed.size(); ++size) {
        EXPECT_EQ(inflater.expand(packed.substr(0, size), out.data(), out.size()), -1) << size;
    }
    std::string damaged = packed;
    damaged.back() = static_cast<char>(damaged.back() + 1);
    EXPECT_EQ(inflater.expand(damaged, out.data(), out.size()), -1);
    EXPECT_EQ(inflater.expand(packed + "x", out.data(), out.size()), -1);
    EXPECT_EQ(inflater.expand(packed, out.data(), out.size() - 1), -1);
    EXPECT_EQ(inflater.expand(packed, out.data(), out.size()), 1000);
}

} // namespace tallyfold::pdf
