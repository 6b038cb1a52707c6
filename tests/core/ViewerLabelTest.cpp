#include "core/ViewerLabel.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tallyfold {

namespace {

StampSettings settingsOf(const QString &prefix, std::int64_t digits, const QString &suffix = {})
{
    StampSettings settings;
    settings.prefix = prefix;
    settings.digits = digits;
    settings.suffix = suffix;
    return settings;
}

pdf::PageLabel labelOf(std::optional<std::int64_t> number, const StampSettings &settings, bool stamped = true)
{
    return viewerLabel({number, stamped}, settings.normalized());
}

} // namespace

TEST(ViewerLabel, TakesTheZerosBeforeANumberAsPartOfThePrefix)
{
    const StampSettings settings = settingsOf(QStringLiteral("ABC"), 6);
    EXPECT_EQ(labelOf(8, settings), (pdf::PageLabel{u"ABC00000", 8}));
    EXPECT_EQ(labelOf(10, settings), (pdf::PageLabel{u"ABC0000", 10}));
    EXPECT_EQ(labelOf(999'999, settings), (pdf::PageLabel{u"ABC", 999'999}));
    EXPECT_EQ(labelOf(1'000'000, settings), (pdf::PageLabel{u"ABC", 1'000'000}));
}

TEST(ViewerLabel, IsTextAloneWhereNoRangeHasSuchNumbers)
{
    EXPECT_EQ(labelOf(0, settingsOf(QStringLiteral("A"), 3)), (pdf::PageLabel{u"A000", std::nullopt}));
    EXPECT_EQ(labelOf(7, settingsOf(QStringLiteral("A"), 3, QStringLiteral("-X"))),
              (pdf::PageLabel{u"A007-X", std::nullopt}));
}

TEST(ViewerLabel, IsThatOfTheNumberWhetherThePageShowsItOrNot)
{
    EXPECT_EQ(labelOf(1, settingsOf(QStringLiteral("A"), 1), false), (pdf::PageLabel{u"A", 1}));
}

TEST(ViewerLabel, IsEmptyOnAPageThatIsNotCounted)
{
    EXPECT_TRUE(labelOf(std::nullopt, settingsOf(QStringLiteral("A"), 1)).isEmpty());
}

} // namespace tallyfold
