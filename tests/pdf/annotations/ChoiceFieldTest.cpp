#include "pdf/annotations/ChoiceField.h"

#include <gtest/gtest.h>

#include <QString>

namespace tallyfold::pdf {

namespace {

std::string textOf(const std::string &entries)
{
    return chosenText(QPDFObjectHandle::parse("<<" + entries + ">>")).toStdString();
}

constexpr const char *countries = "/Opt[[(us)(United States)][(ca)(Canada)](Mexico)]";

} // namespace

TEST(ChoiceField, AValueIsShownAsItsOption)
{
    EXPECT_EQ(textOf(std::string(countries) + "/V(ca)"), "Canada");
    EXPECT_EQ(textOf(std::string(countries) + "/V(Mexico)"), "Mexico");
    EXPECT_EQ(textOf(std::string(countries) + "/V(typed in)"), "typed in");
    EXPECT_EQ(textOf("/V(ca)"), "ca");
}

TEST(ChoiceField, SeveralValuesAreSetApartByCommas)
{
    EXPECT_EQ(textOf(std::string(countries) + "/V[(us)(other)(ca)]"), "United States, other, Canada");
}

TEST(ChoiceField, IndicesCountWhereThereIsNoValue)
{
    EXPECT_EQ(textOf(std::string(countries) + "/I[0]"), "United States");
    EXPECT_EQ(textOf(std::string(countries) + "/I[0 2]"), "United States, Mexico");
    EXPECT_EQ(textOf(std::string(countries) + "/I[2 1]"), "Canada, Mexico");
    EXPECT_EQ(textOf(std::string(countries) + "/V()/I[1]"), "Canada");
    EXPECT_EQ(textOf(std::string(countries) + "/V(us)/I[1]"), "United States");
}

TEST(ChoiceField, IndicesOfNoOptionAreIgnored)
{
    EXPECT_EQ(textOf(std::string(countries) + "/I[-1 3 1.0 (0) 2147483648]"), "");
    EXPECT_EQ(textOf(std::string(countries) + "/I 1"), "");
    EXPECT_EQ(textOf("/I[0]"), "");
}

TEST(ChoiceField, AnOptionOfOneTextIsShownAsItIs)
{
    EXPECT_EQ(textOf("/Opt[[(a)(b)(c)]]/V(a)"), "b");
    EXPECT_EQ(textOf("/Opt[[(a)]]/V(a)"), "a");
    EXPECT_EQ(textOf("/Opt(a)/V(a)"), "a");
}

TEST(ChoiceField, TheFieldsAboveGiveWhatIsMissing)
{
    EXPECT_EQ(textOf("/V(ca)/Parent<<" + std::string(countries) + ">>"), "Canada");
    EXPECT_EQ(textOf("/Parent<</I[1]" + std::string(countries) + ">>"), "Canada");
}

TEST(ChoiceField, TenThousandOptionsAreLookedAt)
{
    std::string options;
    for (int index = 0; index <= 10'000; ++index) {
        options += "[(" + std::to_string(index) + ")(option " + std::to_string(index) + ")]";
    }
    EXPECT_EQ(textOf("/Opt[" + options + "]/V(9999)"), "option 9999");
    EXPECT_EQ(textOf("/Opt[" + options + "]/V(10000)"), "10000");
}

} // namespace tallyfold::pdf
