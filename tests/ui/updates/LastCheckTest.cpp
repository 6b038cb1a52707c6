#include "ui/updates/StoredLastCheck.h"

#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

const QDateTime now(QDate(2024, 5, 6), QTime(7, 8, 9), Qt::UTC);

} // namespace

TEST(LastCheck, ACheckIsDueOnceADay)
{
    EXPECT_TRUE(isCheckDue(std::nullopt, now));
    EXPECT_FALSE(isCheckDue(now, now));
    EXPECT_FALSE(isCheckDue(now.addSecs(-86'399), now));
    EXPECT_TRUE(isCheckDue(now.addSecs(-86'400), now));
}

TEST(LastCheck, AClockThatWasWrongDoesNotEndChecks)
{
    EXPECT_TRUE(isCheckDue(now.addYears(50), now));
    EXPECT_TRUE(isCheckDue(now.addSecs(1), now));
    EXPECT_TRUE(isCheckDue(QDateTime(), now));
}

TEST(LastCheck, TheTimeIsKeptInAFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("settings.ini"));
    EXPECT_EQ(StoredLastCheck(path).load(), std::nullopt);
    StoredLastCheck(path).save(now.toOffsetFromUtc(7'200));
    EXPECT_EQ(StoredLastCheck(path).load(), now);
}

TEST(LastCheck, WhatIsNoTimeWasNever)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("settings.ini"));
    QSettings(path, QSettings::IniFormat).setValue(QStringLiteral("lastUpdateCheck"), QStringLiteral("soon"));
    EXPECT_EQ(StoredLastCheck(path).load(), std::nullopt);
}

} // namespace tallyfold
