#include "core/check/PageNumberText.h"

#include <gtest/gtest.h>

namespace tallyfold::check {

using namespace Qt::StringLiterals;

namespace {

using Kind = NumberOnPage::Kind;

/// What is found of ABC000012 in `text`.
NumberOnPage found(const QString &text)
{
    const auto numbers = NumberedPages::of(u"ABC000011"_s, u"ABC000020"_s, 10);
    return numberIn(std::array{QString(), text}, *numbers, 1);
}

} // namespace

TEST(PageNumberText, IsFoundAmongOtherText)
{
    EXPECT_EQ(found(u"ABC000012"_s).kind, Kind::expected);
    EXPECT_EQ(found(u"see above ABC000012\nConfidential"_s).kind, Kind::expected);
    EXPECT_EQ(found(u"footerABC000012 page"_s).kind, Kind::expected);
    EXPECT_EQ(found(u"ABC000011 ABC000012"_s).kind, Kind::expected);
}

TEST(PageNumberText, MayBeBrokenBySpaces)
{
    EXPECT_EQ(found(u"ABC 000012"_s).kind, Kind::expected);
    EXPECT_EQ(found(u"A B C\n0 0 0 0 1 2"_s).kind, Kind::expected);
}

TEST(PageNumberText, IsNotFoundInMoreDigits)
{
    EXPECT_EQ(found(u"ABC0000123"_s), (NumberOnPage{Kind::other, u"ABC0000123"_s}));
    EXPECT_EQ(found(u"ABC000012 3"_s).kind, Kind::expected);
    const auto bare = NumberedPages::of(u"000011"_s, u"000020"_s, 10);
    EXPECT_EQ(numberIn(std::array{u"7000012"_s}, *bare, 1).kind, Kind::other);
}

TEST(PageNumberText, IsAnotherWhereThatStandsThere)
{
    EXPECT_EQ(found(u"ABC000013"_s), (NumberOnPage{Kind::other, u"ABC000013"_s}));
    EXPECT_EQ(found(u"ABD000012"_s), NumberOnPage());
    EXPECT_EQ(found(u"ABC12"_s), NumberOnPage());
    EXPECT_EQ(found({}), NumberOnPage());
}

TEST(PageNumberText, IsTooShortBelowFourCharacters)
{
    EXPECT_TRUE(isTooShort(u"A 12"_s));
    EXPECT_FALSE(isTooShort(u"A123"_s));
}

TEST(PageNumberText, StandsInStripsAsDeepAsMarginsAndSizesGo)
{
    const auto [bottom, top] = stampStrips({10, 20, 622, 812});
    EXPECT_EQ(bottom.minX, 10);
    EXPECT_EQ(bottom.maxX, 622);
    EXPECT_EQ(bottom.minY, 20);
    EXPECT_GE(bottom.maxY, 20 + 144 + 72);
    EXPECT_EQ(top.maxY, 812);
    EXPECT_EQ(top.maxY - top.minY, bottom.maxY - bottom.minY);
    const auto [low, high] = stampStrips({0, 0, 100, 60});
    EXPECT_EQ(low.maxY, 30);
    EXPECT_EQ(high.minY, 30);
}

} // namespace tallyfold::check
