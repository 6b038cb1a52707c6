#include "ui/updates/Appcast.h"

#include "tests/ui/updates/FeedServer.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::feedWith;
using tests::release;

namespace {

UpdateOutcome evaluated(const QByteArray &items)
{
    return evaluateFeed(feedWith(items), AppVersion::parse(u"1.2").value_or(AppVersion()));
}

UpdateOutcome newer(const QString &version)
{
    return NewerVersion{version, QStringLiteral("What is new in ") + version,
                        QUrl(QStringLiteral("https://example.org/") + version)};
}

QByteArray releaseFor(const QByteArray &os, const QByteArray &version)
{
    return release(version).replace("</item>", "<sparkle:os>" + os + "</sparkle:os></item>");
}

const UpdateOutcome badFeed = UpdateCheckFailed{UpdateCheckFailed::Reason::badFeed};

} // namespace

TEST(FeedEvaluation, TheSameAndOlderVersionsAreUpToDate)
{
    EXPECT_EQ(evaluated(release("1.2")), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(evaluated(release("1.2.0")), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(evaluated(release("1.1.9")), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(evaluated(release("1.2-beta2")), UpdateOutcome(UpToDate{}));
}

TEST(FeedEvaluation, TheNewestCountsWhereverItStands)
{
    EXPECT_EQ(evaluated(release("1.2.1")), newer(QStringLiteral("1.2.1")));
    EXPECT_EQ(evaluated(release("1.9") + release("1.10") + release("1.3") + release("1.10-rc1")),
              newer(QStringLiteral("1.10")));
    EXPECT_EQ(evaluated(release("unknown") + release("1.3")), newer(QStringLiteral("1.3")));
}

TEST(FeedEvaluation, WhatUsersCallAVersionIsCompared)
{
    EXPECT_EQ(evaluated("<item><sparkle:version>4711</sparkle:version>"
                        "<sparkle:shortVersionString>1.2</sparkle:shortVersionString></item>"),
              UpdateOutcome(UpToDate{}));
    EXPECT_EQ(evaluated("<item><sparkle:version>1.3</sparkle:version>"
                        "<sparkle:shortVersionString>One Three</sparkle:shortVersionString></item>"),
              UpdateOutcome(NewerVersion{QStringLiteral("1.3"), {}, {}}));
}

TEST(FeedEvaluation, ReleasesForOtherSystemsDoNotCount)
{
    EXPECT_EQ(evaluated(releaseFor("macos", "3.0")), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(evaluated(releaseFor("windows", "3.0") + releaseFor("Linux", "2.0")),
              newer(QStringLiteral("2.0")));
}

TEST(FeedEvaluation, AFeedWithoutReleasesIsUpToDate)
{
    EXPECT_EQ(evaluated({}), UpdateOutcome(UpToDate{}));
}

TEST(FeedEvaluation, NotesBecomePlainText)
{
    EXPECT_EQ(evaluated("<item><sparkle:version>2</sparkle:version><description><![CDATA[<p>Faster &amp; "
                        "<b>better</b></p>]]></description></item>"),
              UpdateOutcome(NewerVersion{QStringLiteral("2"), QStringLiteral("Faster & better"), {}}));
}

TEST(FeedEvaluation, WhatCannotBeReadIsABadFeed)
{
    EXPECT_EQ(evaluated("<item/>"), badFeed);
    EXPECT_EQ(evaluated(release("unknown")), badFeed);
    EXPECT_EQ(evaluateFeed("garbage", AppVersion()), badFeed);
}

} // namespace tallyfold
