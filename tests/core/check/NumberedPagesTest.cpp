#include "core/check/NumberedPages.h"

#include "core/StampSettings.h"

#include <gtest/gtest.h>

namespace tallyfold::check {

using namespace Qt::StringLiterals;

TEST(NumberedPages, AreAllPagesOrAllButTheFirst)
{
    const auto all = NumberedPages::of(u"ABC000009"_s, u"ABC000011"_s, 3);
    ASSERT_TRUE(all);
    EXPECT_EQ(all->firstPage, 1);
    EXPECT_EQ(all->count, 3);
    EXPECT_EQ(all->text(0), u"ABC000009"_s);
    EXPECT_EQ(all->text(2), u"ABC000011"_s);

    const auto rest = NumberedPages::of(u"ABC000009"_s, u"ABC000011"_s, 4);
    ASSERT_TRUE(rest);
    EXPECT_EQ(rest->firstPage, 2);
    EXPECT_EQ(rest->count, 3);
}

TEST(NumberedPages, AreNotUnderstoodWhereTheTextsDoNotGoTogether)
{
    EXPECT_FALSE(NumberedPages::of(u"ABC000001"_s, u"ABC000003"_s, 2));
    EXPECT_FALSE(NumberedPages::of(u"ABC000001"_s, u"ABC000003"_s, 5));
    EXPECT_FALSE(NumberedPages::of(u"ABC000001"_s, u"ABD000003"_s, 3));
    EXPECT_FALSE(NumberedPages::of(u"ABC000003"_s, u"ABC000001"_s, 3));
    EXPECT_FALSE(NumberedPages::of(u"ABC"_s, u"ABC"_s, 1));
    EXPECT_FALSE(NumberedPages::of({}, {}, 1));
    EXPECT_FALSE(NumberedPages::of(u"A1"_s, u"A1"_s, 0));
    EXPECT_FALSE(NumberedPages::of(u"A1"_s, u"A0"_s, 0));
    EXPECT_FALSE(NumberedPages::of(u"A1"_s, u"A0"_s, -1));
}

TEST(NumberedPages, AreSoonSeenNotToBeInTextsThatNoSettingsPrint)
{
    const QString digits(100'000, u'1');
    EXPECT_FALSE(NumberedPages::of(digits, digits, 1));
    EXPECT_FALSE(NumberedPages::of(QString(512, u'1'), QString(511, u'1') + u'2', 7));
}

TEST(NumberedPages, GiveTheNumbersThatAnySettingsPrint)
{
    for (const QString &prefix : {u""_s, u"ABC"_s, u"A1-"_s, u"2024"_s, u"A1"_s, u"\u6587 "_s}) {
        for (const QString &suffix : {u""_s, u"-X"_s, u"-2"_s, u"7"_s}) {
            for (const std::int64_t digits : {1, 6, 12}) {
                for (const std::int64_t start : {0LL, 1LL, 8LL, 95LL, 999998LL, 999999999LL}) {
                    StampSettings settings;
                    settings.prefix = prefix;
                    settings.suffix = suffix;
                    settings.digits = digits;
                    for (const std::int64_t count : {1, 2, 3, 15, 120}) {
                        const auto numbers = NumberedPages::of(settings.bates(start),
                                                               settings.bates(start + count - 1), count);
                        ASSERT_TRUE(numbers) << settings.bates(start).toStdString() << ' ' << count;
                        EXPECT_EQ(numbers->firstPage, 1);
                        for (std::int64_t index = 0; index < count; ++index) {
                            ASSERT_EQ(numbers->text(index), settings.bates(start + index));
                        }
                    }
                }
            }
        }
    }
}

} // namespace tallyfold::check
