#include "pdf/syntax/Deflater.h"

#include <gtest/gtest.h>

#include <zlib.h>

namespace tallyfold::pdf {

namespace {

std::string inflated(std::string_view compressed, std::size_t length)
{
    std::string out(length, '\0');
    auto size = static_cast<uLongf>(length);
    const int result =
        uncompress(reinterpret_cast<Bytef *>(out.data()), &size,
                   reinterpret_cast<const Bytef *>(compressed.data()), static_cast<uLong>(compressed.size()));
    EXPECT_EQ(result, Z_OK);
    out.resize(size);
    return out;
}

} // namespace

TEST(Deflater, WhatItCompressesInflatesAgain)
{
    Deflater deflater;
    std::string data;
    for (int line = 0; line < 20'000; ++line) {
        data += "line " + std::to_string(line * 7919 % 10007) + "\n";
    }
    EXPECT_EQ(inflated(deflater.compress(data), data.size()), data);
    EXPECT_EQ(inflated(deflater.compress("x"), 1), "x");
    EXPECT_EQ(inflated(deflater.compress({}), 1), "");
}

TEST(Deflater, TheSameDataGivesTheSameBytesWhateverCameBefore)
{
    Deflater fresh;
    Deflater used;
    (void)used.compress(std::string(100'000, 'a'));
    const std::string data = "0 0 612 792 re W n";
    EXPECT_EQ(std::string(fresh.compress(data)), std::string(used.compress(data)));
}

TEST(Deflater, UpPredictorKeepsTheFirstRowAndTheDifferencesOfTheOthers)
{
    EXPECT_EQ(withUpPredictor("\x05\x06\x07\x04", 2), std::string("\x02\x05\x06\x02\x02\xFE"));
}

} // namespace tallyfold::pdf
