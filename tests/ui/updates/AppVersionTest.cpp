#include "ui/updates/AppVersion.h"

#include <gtest/gtest.h>

#include <array>

namespace tallyfold {

namespace {

AppVersion version(const char *text)
{
    const std::optional<AppVersion> parsed = AppVersion::parse(QString::fromUtf8(text));
    EXPECT_TRUE(parsed) << text;
    return parsed.value_or(AppVersion());
}

} // namespace

TEST(AppVersion, VersionsAreOrderedByWhatTheyMean)
{
    const std::array ordered{"0",       "0.9",      "1.0-alpha", "1.0-beta", "1.0-beta2", "1.0-beta10",
                             "1.0-rc1", "1",        "1.0.0.1",   "1.2",      "1.9.9",     "1.10",
                             "1.10.2",  "2-beta.1", "2",         "10"};
    for (std::size_t left = 0; left < ordered.size(); ++left) {
        for (std::size_t right = 0; right < ordered.size(); ++right) {
            EXPECT_EQ(version(ordered[left]) <=> version(ordered[right]), left <=> right)
                << ordered[left] << " and " << ordered[right];
        }
    }
}

TEST(AppVersion, WaysToWriteTheSameAreEqual)
{
    EXPECT_EQ(version("1"), version("1.0.0"));
    EXPECT_EQ(version("v1.2"), version("1.2"));
    EXPECT_EQ(version(" V1.02 "), version("1.2"));
    EXPECT_EQ(version("1.2-Beta2"), version("1.2-beta.2"));
    EXPECT_EQ(version("0.0"), AppVersion());
}

TEST(AppVersion, NumbersHave31Bits)
{
    EXPECT_LT(version("1.2147483646"), version("1.2147483647"));
    EXPECT_FALSE(AppVersion::parse(u"1.2147483648"));
    EXPECT_FALSE(AppVersion::parse(u"18446744073709551616.1"));
    EXPECT_LT(version("1-rc2147483648"), version("1-rc18446744073709551616"));
}

TEST(AppVersion, LongTextsAreNone)
{
    EXPECT_TRUE(AppVersion::parse(QString(QStringLiteral("1.2-") + QString(96, u'x'))));
    EXPECT_FALSE(AppVersion::parse(QString(QStringLiteral("1.2-") + QString(97, u'x'))));
}

TEST(AppVersion, TheTextIsKeptAsItWasWritten)
{
    EXPECT_EQ(version(" v1.20.0-Beta2 ").text(), QStringLiteral("1.20.0-Beta2"));
    EXPECT_EQ(AppVersion().text(), QStringLiteral("0"));
}

TEST(AppVersion, OtherTextsAreNone)
{
    for (const char *text :
         {"",      " ",   "v",   "vv1", ".",        "1.", ".1",   "1..2",   "-",     "1-",    "1--",
          "-beta", "1.x", "one", "1 2", "1.2 (42)", "+1", "1.-2", "1-béta", "１.２", "1-a_b", "1,2"}) {
        EXPECT_FALSE(AppVersion::parse(QString::fromUtf8(text))) << text;
    }
}

} // namespace tallyfold
