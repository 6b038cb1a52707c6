#include "pdf/syntax/DictionaryWriter.h"

#include <gtest/gtest.h>

#include <string>

namespace tallyfold::pdf {

TEST(ArrayWriter, SeparatesItemsWhereTheirSyntaxNeedsIt)
{
    std::string out;
    {
        ArrayWriter array(out);
        array.reference(4);
        array.integer(-12);
        array.number(0.5);
        array.number(1.26, 1);
    }
    EXPECT_EQ(out, "[4 0 R -12 0.5 1.3]");
}

TEST(ArrayWriter, IsEmptyWithoutItems)
{
    std::string out = "before";
    {
        const ArrayWriter array(out);
    }
    EXPECT_EQ(out, "before[]");
}

TEST(ArrayWriter, ClosesItselfBeforeTheOneAroundItGoesOn)
{
    std::string out;
    {
        DictionaryWriter entries(out);
        {
            ArrayWriter outer = entries.array("/W");
            outer.integer(1);
            ArrayWriter(outer.out()).integer(500);
            outer.integer(7);
            const DictionaryWriter inner(outer.out());
        }
        entries.array("/Kids").reference(3);
    }
    EXPECT_EQ(out, "<</W[1[500]7<<>>]/Kids[3 0 R]>>");
}

TEST(ArrayWriter, KeepsItemsOfOtherMeansApart)
{
    std::string out;
    {
        ArrayWriter array(out);
        for (const char *item : {"[1 2]", "/A", "(b)"}) {
            array.item();
            array.out().append(item);
        }
    }
    EXPECT_EQ(out, "[[1 2] /A (b)]");
}

} // namespace tallyfold::pdf
