#include "app/UserSettings.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

const QString key = QStringLiteral("someKey");

/// Redirects the settings of user and system to the temporary folder.
class UserSettingsPlace : public testing::Test {
protected:
    UserSettingsPlace()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, pathOf("user"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, pathOf("system"));
    }
    ~UserSettingsPlace() override
    {
        // The paths cannot be reset, but no other test uses them.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/nowhere"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, QStringLiteral("/nowhere"));
    }

    [[nodiscard]] QString pathOf(const char *name) const
    {
        return QString::fromStdString(folder / name);
    }

    tests::TemporaryFolder folder;
};

} // namespace

TEST_F(UserSettingsPlace, IsOneFileOfTheUsers)
{
    UserSettings().setValue(key, 7);
    const QString file = pathOf("user") + QStringLiteral("/Tallyfold/Tallyfold.conf");
    EXPECT_EQ(UserSettings().fileName(), file);
    EXPECT_EQ(UserSettings(file).value(key).toInt(), 7);
}

TEST_F(UserSettingsPlace, WhatTheSystemSetForAllUsersIsNotTheUsers)
{
    for (const char *name : {"/Tallyfold/Tallyfold.conf", "/Tallyfold.conf"}) {
        QSettings(pathOf("system") + QLatin1String(name), QSettings::IniFormat).setValue(key, 7);
    }
    EXPECT_FALSE(UserSettings().contains(key));
    UserSettings().setValue(key, 8);
    EXPECT_EQ(UserSettings().value(key).toInt(), 8);
}

} // namespace tallyfold
