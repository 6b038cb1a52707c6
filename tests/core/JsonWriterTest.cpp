#include "core/JsonWriter.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace tallyfold {

TEST(JsonWriter, ElementsOfAnArrayAreSetApartByCommas)
{
    EXPECT_EQ(JsonWriter::array({}), "[]");
    const std::array<QByteArray, 1> one{"1"};
    EXPECT_EQ(JsonWriter::array(one), "[1]");
    const std::array<QByteArray, 3> three{"1", "\"b\"", "{}"};
    EXPECT_EQ(JsonWriter::array(three), R"([1,"b",{}])");
}

TEST(JsonWriter, EntriesOfAnObjectAreSetApartByCommas)
{
    EXPECT_EQ(JsonWriter::object({}), "{}");
    EXPECT_EQ(JsonWriter::object({{"a", "1"}}), R"({"a":1})");
    EXPECT_EQ(JsonWriter::object({{"a", "1"}, {"b", "[]"}, {"c", "null"}}), R"({"a":1,"b":[],"c":null})");
}

TEST(JsonWriter, TextIsQuotedAndEscaped)
{
    EXPECT_EQ(JsonWriter::text(QString()), R"("")");
    EXPECT_EQ(JsonWriter::text(QStringLiteral("a\"b\\c\n")), R"("a\"b\\c\n")");
}

TEST(JsonWriter, NumbersAreWrittenToTheLastDigit)
{
    EXPECT_EQ(JsonWriter::integer(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(JsonWriter::number(0.1), "0.1");
    EXPECT_EQ(JsonWriter::number(-std::numeric_limits<double>::denorm_min()), "-5e-324");
    EXPECT_EQ(JsonWriter::number(-2.2250738585072014e-308), "-2.2250738585072014e-308");
    EXPECT_EQ(JsonWriter::boolean(true), "true");
    EXPECT_EQ(JsonWriter::boolean(false), "false");
}

} // namespace tallyfold
