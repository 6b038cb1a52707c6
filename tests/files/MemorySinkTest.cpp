#include "files/MemorySink.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace tallyfold::files {

TEST(MemorySink, GivesItsBytesInOrder)
{
    MemorySink sink;
    ASSERT_TRUE(sink.write(std::string_view("one")));
    ASSERT_TRUE(sink.write(std::string_view("two")));
    ASSERT_TRUE(sink.finish());
    const std::vector<char> bytes = std::move(sink).bytes();
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "onetwo");
}

} // namespace tallyfold::files
