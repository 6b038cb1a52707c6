#include "app/AppSettings.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

AppSettings decoded(const char *json)
{
    return decodeAppSettings(QByteArray(json)).value_or(AppSettings{true, {}, false, true, {}});
}

} // namespace

TEST(AppSettings, TheDefaultsAreThoseOfAFirstLaunch)
{
    const AppSettings settings = AppSettings::defaults();
    EXPECT_FALSE(settings.onboardingDone);
    EXPECT_EQ(settings.stamp, StampSettings());
    EXPECT_EQ(settings.stamp.pageOfTotalFormat, QStringLiteral("Page {page} of {total}"));
    EXPECT_TRUE(settings.writeIndex);
    EXPECT_FALSE(settings.writePrivilegeLog);
    EXPECT_TRUE(settings.presets.empty());
}

TEST(AppSettings, KeysAreStoredInTheirOrder)
{
    const QByteArray json = *encode(AppSettings());
    EXPECT_TRUE(json.startsWith("{\"onboardingDone\":false,\"stamp\":{\"prefix\":\"ABC\",\"digits\":6,"))
        << json.data();
    EXPECT_TRUE(json.endsWith("},\"writeIndex\":true,\"writePrivilegeLog\":false,\"presets\":[]}"))
        << json.data();
}

TEST(AppSettings, WhatIsStoredComesBack)
{
    AppSettings settings;
    settings.onboardingDone = true;
    settings.stamp.startNumber = 999'999'999;
    settings.stamp.legend = QStringLiteral("Ünïcödé “quotes” \\ \"");
    settings.writeIndex = false;
    settings.writePrivilegeLog = true;
    settings.presets = {
        Preset::of(QUuid::createUuid(), QStringLiteral("Letters"), settings.stamp),
        Preset::of(QUuid::createUuid(), QStringLiteral("letters"), StampSettings::exhibits())};
    EXPECT_EQ(decodeAppSettings(*encode(settings)), settings);
}

TEST(AppSettings, ADocumentWithOneKeyLeavesTheOthersAtTheirDefaults)
{
    const AppSettings settings = decoded("{\"onboardingDone\":true}");
    EXPECT_TRUE(settings.onboardingDone);
    AppSettings others = settings;
    others.onboardingDone = false;
    EXPECT_EQ(others, AppSettings::defaults());
}

TEST(AppSettings, NullCountsAsMissing)
{
    EXPECT_EQ(
        decoded("{\"onboardingDone\":null,\"stamp\":null,\"writeIndex\":null,\"writePrivilegeLog\":null,"
                "\"presets\":null}"),
        AppSettings::defaults());
}

TEST(AppSettings, AWrongTypeInOneOfTheFiveKeysFailsTheWhole)
{
    for (const char *json :
         {"{\"onboardingDone\":true,\"writeIndex\":\"yes\"}", "{\"onboardingDone\":1}", "{\"stamp\":[]}",
          "{\"stamp\":7}", "{\"writePrivilegeLog\":{}}", "{\"presets\":{}}", "{\"presets\":[7]}",
          "{\"presets\":\"\"}", "[]", "7", "", "{\"onboardingDone\":tru", "\xff\xfe"}) {
        EXPECT_FALSE(decodeAppSettings(QByteArray(json))) << json;
    }
}

TEST(AppSettings, InsideOfStampSettingsReadingIsTolerant)
{
    const AppSettings settings = decoded("{\"stamp\":{\"prefix\":7,\"digits\":4,\"cover\":\"unknown\"}}");
    EXPECT_EQ(settings.stamp.prefix, QStringLiteral("ABC"));
    EXPECT_EQ(settings.stamp.digits, 4);
    EXPECT_EQ(settings.stamp.cover, CoverOption::stampAll);
}

TEST(AppSettings, ANumberThatIsNotFiniteIsNotStored)
{
    AppSettings settings;
    settings.stamp.margin = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(encode(settings));
}

} // namespace tallyfold
