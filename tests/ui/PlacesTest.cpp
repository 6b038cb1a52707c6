#include "ui/panels/Places.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace tallyfold {

namespace {

using Places = std::vector<Place>;

} // namespace

TEST(Places, BookmarksOfGnomeHaveTheirTitles)
{
    EXPECT_EQ(
        gtkBookmarks("file:///srv/cases\nfile:///srv/a%20b%FF My Case 12\nsftp://host/x Far\n\n"),
        (Places{{QStringLiteral("cases"), "/srv/cases"}, {QStringLiteral("My Case 12"), "/srv/a b\xff"}}));
    EXPECT_TRUE(gtkBookmarks({}).empty());
}

TEST(Places, BookmarksOfPlasmaAreReadWithoutThoseThatAreHidden)
{
    const QByteArray content =
        "<?xml version=\"1.0\"?><!DOCTYPE xbel><xbel>"
        "<bookmark href=\"file:///srv/cases\"><title>Cases &amp; more</title><info><metadata>"
        "<isSystemItem>false</isSystemItem></metadata></info></bookmark>"
        "<bookmark href=\"trash:/\"><title>Trash</title></bookmark>"
        "<bookmark href=\"file:///srv/old\"><title>Old</title><info><metadata>"
        "<isHidden>true</isHidden></metadata></info></bookmark>"
        "<bookmark href=\"file:///srv/b%FF\"/>"
        "<bookmark href=\"file:///srv/cut";
    EXPECT_EQ(kdePlaces(content), (Places{{QStringLiteral("Cases & more"), "/srv/cases"},
                                          {QStringLiteral("b\uFFFD"), "/srv/b\xff"}}));
    EXPECT_TRUE(kdePlaces("no document").empty());
}

TEST(Places, WhatAUserMountsIsNoPartOfTheSystem)
{
    for (const char *folder :
         {"/media/stick", "/media/ann/disk", "/run/media/ann/disk", "/mnt", "/mnt/share"}) {
        EXPECT_TRUE(isUsersVolume(folder)) << folder;
    }
    for (const char *folder : {"/", "/boot", "/run", "/run/user/1000", "/media", "/mntx", "/home"}) {
        EXPECT_FALSE(isUsersVolume(folder)) << folder;
    }
}

TEST(Places, EachIsOfferedOnceAndOnlyIfItIsThere)
{
    const tests::TemporaryFolder folder;
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    const QByteArray dataBefore = qgetenv("XDG_DATA_HOME");
    std::filesystem::create_directories(folder / "gtk-3.0");
    std::filesystem::create_directories(folder / "cases");
    const std::string uri = "file://" + (folder / "cases").native();
    std::ofstream(folder / "gtk-3.0" / "bookmarks") << uri << " Cases\n"
                                                    << uri << "\nfile:///no/such/folder\n";
    std::ofstream(folder / "user-places.xbel") << "<xbel><bookmark href=\"" << uri << "\"/></xbel>";
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.path().native()));
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(folder.path().native()));
    const Places places = usersPlaces();
    const auto count = [&places](const std::filesystem::path &path) {
        return std::count_if(places.begin(), places.end(),
                             [&path](const Place &place) { return place.folder == path; });
    };
    EXPECT_EQ(count(folder / "cases"), 1);
    EXPECT_EQ(count("/no/such/folder"), 0);
    EXPECT_EQ(count("/"), 1);
    EXPECT_EQ(places.back().title, QStringLiteral("Computer"));
    before.isEmpty() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
    dataBefore.isEmpty() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", dataBefore);
}

} // namespace tallyfold
