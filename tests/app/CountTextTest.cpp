#include "app/CountText.h"

#include "app/Translations.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

class CountText : public testing::Test {
protected:
    Translations translations;
};

} // namespace

TEST_F(CountText, OneHasItsOwnWord)
{
    EXPECT_EQ(countText(1, Counted::files), QStringLiteral("1 file"));
    EXPECT_EQ(countText(1, Counted::pages), QStringLiteral("1 page"));
    EXPECT_EQ(countText(1, Counted::stampedCopies), QStringLiteral("1 stamped copy"));
}

TEST_F(CountText, ManyAndNoneHaveThePlural)
{
    EXPECT_EQ(countText(0, Counted::files), QStringLiteral("0 files"));
    EXPECT_EQ(countText(2, Counted::pages), QStringLiteral("2 pages"));
    EXPECT_EQ(countText(3, Counted::stampedCopies), QStringLiteral("3 stamped copies"));
}

TEST_F(CountText, LargeCountsAreWrittenAsTheUserWritesNumbers)
{
    QLocale::setDefault(QLocale(QStringLiteral("en_US")));
    EXPECT_EQ(countText(40'000, Counted::pages), QStringLiteral("40,000 pages"));
    EXPECT_EQ(countText(4'294'967'297, Counted::pages), QStringLiteral("4,294,967,297 pages"));
    QLocale::setDefault(QLocale::c());
}

} // namespace tallyfold
