#include "pdf/copy/PageLabels.h"

#include "tests/support/RecordedObjects.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// What a catalog gets for pages with these labels.
std::string labelled(const std::vector<PageLabel> &labels)
{
    tests::RecordedObjects objects;
    PageLabels ranges(objects);
    for (const PageLabel &label : labels) {
        ranges.add(label);
    }
    std::string syntax;
    EntryWriter catalog(syntax);
    ranges.finish(catalog);
    return syntax;
}

} // namespace

TEST(PageLabels, AreOneRangeAsLongAsNumbersGoUpByOne)
{
    EXPECT_EQ(labelled({{u"ABC0", 7}, {u"ABC0", 8}, {u"ABC0", 9}}),
              "/PageLabels<</Nums[0 <</P(ABC0)/S/D/St 7>>]>>");
}

TEST(PageLabels, BeginARangeWhereThePrefixChanges)
{
    EXPECT_EQ(labelled({{u"ABC0", 9}, {u"ABC", 10}, {u"ABC", 11}}),
              "/PageLabels<</Nums[0 <</P(ABC0)/S/D/St 9>> 1 <</P(ABC)/S/D/St 10>>]>>");
}

TEST(PageLabels, BeginARangeWhereANumberDoesNotFollow)
{
    EXPECT_EQ(labelled({{u"", 1}, {u"", 3}, {u"", 3}, {u"", 2}}),
              "/PageLabels<</Nums[0 <</S/D/St 1>> 1 <</S/D/St 3>> 2 <</S/D/St 3>> 3 <</S/D/St 2>>]>>");
}

TEST(PageLabels, AreAPrefixAloneWithoutANumber)
{
    EXPECT_EQ(labelled({{u"ABC0", std::nullopt}, {u"ABC", 1}, {u"ABC", std::nullopt}}),
              "/PageLabels<</Nums[0 <</P(ABC0)>> 1 <</P(ABC)/S/D/St 1>> 2 <</P(ABC)>>]>>");
}

TEST(PageLabels, AreEmptyBeforeTheFirstNumberedPage)
{
    EXPECT_EQ(labelled({{}, {}, {u"A", 1}}), "/PageLabels<</Nums[0 <<>> 2 <</P(A)/S/D/St 1>>]>>");
}

TEST(PageLabels, AreLeftOutWhereNoPageHasOne)
{
    EXPECT_EQ(labelled({}), "");
    EXPECT_EQ(labelled({{}, {}}), "");
}

TEST(PageLabels, ArePlainTextOnlyWhereItIsPrintableAscii)
{
    EXPECT_EQ(labelled({{u"a(b)\\ ~", std::nullopt}}), "/PageLabels<</Nums[0 <</P(a\\(b\\)\\\\ ~)>>]>>");
    EXPECT_EQ(labelled({{u"\u00c4", 1}}), "/PageLabels<</Nums[0 <</P<FEFF00C4>/S/D/St 1>>]>>");
    EXPECT_EQ(labelled({{u"A\t", 1}}), "/PageLabels<</Nums[0 <</P<FEFF00410009>/S/D/St 1>>]>>");
    EXPECT_EQ(labelled({{u"\u007f", 1}}), "/PageLabels<</Nums[0 <</P<FEFF007F>/S/D/St 1>>]>>");
    EXPECT_EQ(labelled({{u"\U0001F4C4", 1}}), "/PageLabels<</Nums[0 <</P<FEFFD83DDCC4>/S/D/St 1>>]>>");
}

} // namespace tallyfold::pdf
